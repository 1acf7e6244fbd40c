#pragma once

#include <string_view>

namespace backendcheck {

/// A text at the very end of memory that can be read and not written to. Once the object is gone
/// its memory is no more, and stays so: whoever reads too far, writes, or comes back later crashes,
/// and faultAt knows why.
class GuardedText {
public:
    explicit GuardedText(std::string_view text);
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;
    ~GuardedText();

    const char* get() const { return text_; }

private:
    char* pages_;
    std::size_t size_; // without the unreadable page behind
    const char* text_;
    std::size_t number_;
};

/// What a crash at that address says of a plug-in, or null.
const char* faultAt(const void* address, bool isWrite);

} // namespace backendcheck
