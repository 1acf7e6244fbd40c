#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// Lines that wait to be written, in memory that is allocated once. If a thread is killed in one of
/// its functions, the buffer is as before or after the call.
///
/// Calls are serialised by the caller.
class WriteBuffer {
public:
    explicit WriteBuffer(std::size_t maxBytes) : maxBytes_(maxBytes) {}

    /// Appends a line, which has its line end. False if there is no room for it, or no memory for
    /// the buffer.
    bool add(std::string_view line) noexcept;

    std::string_view text() const noexcept {
        return begin_ < text_.size() ? std::string_view(text_).substr(begin_) : std::string_view();
    }

    /// Where text() begins, for setBegin.
    std::size_t begin() const noexcept { return begin_; }

    /// Removes what lies before.
    void setBegin(std::size_t begin) noexcept;

    void clear() noexcept { setBegin(text_.size()); }

private:
    std::size_t maxBytes_;
    std::string text_;
    std::size_t begin_ = 0;
};

} // namespace ZOL::Backends
