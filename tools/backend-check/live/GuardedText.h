#pragma once

#include <string_view>

namespace backendcheck {

/// A read-only text that ends where readable memory ends. Its memory becomes unreadable with the
/// object's destruction and is never reused: a plug-in that reads too far, writes, or uses a
/// pointer that it has kept crashes, and faultAt knows why.
class GuardedText {
public:
    explicit GuardedText(std::string_view text);
    GuardedText(const GuardedText&) = delete;
    GuardedText& operator=(const GuardedText&) = delete;
    ~GuardedText();

    const char* get() const { return text_; }

private:
    char* pages_;
    std::size_t size_; // without the unreadable page after it
    const char* text_;
    std::size_t number_;
};

/// What a plug-in did wrong if it crashed at that address, or null. Safe in a signal handler.
const char* faultAt(const void* address, bool isWrite);

} // namespace backendcheck
