#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::GenericLogger::detail {

/// The characters of a line. Up to inlineSize of them lie in the object, longer lines on the heap.
class LineBuffer {
public:
    LineBuffer() noexcept {} // leaves the characters uninitialised
    LineBuffer(const LineBuffer&) = delete;
    LineBuffer& operator=(const LineBuffer&) = delete;
    ~LineBuffer() {
        if (begin_ != inline_) {
            delete[] begin_;
        }
    }

    void append(const char* text, std::size_t size) {
        if (size != 0) { // an empty text may be null, which memcpy does not accept
            std::memcpy(prepare(size), text, size);
            size_ += size;
        }
    }

    /// Returns the end of the text, with space for size more characters. commit appends those that
    /// were written there.
    char* prepare(std::size_t size) {
        if (size > capacity_ - size_) {
            grow(size);
        }
        return begin_ + size_;
    }
    void commit(const char* end) { size_ = static_cast<std::size_t>(end - begin_); }

    /// Returns whether characters are missing because there was no memory for them.
    bool isIncomplete() const { return incomplete_; }

    std::string_view view() const { return {begin_, size_}; }

    /// Returns the zero-terminated text, valid until the next change.
    const char* c_str() {
        begin_[size_] = '\0';
        return begin_;
    }

private:
    static constexpr std::size_t inlineSize = 400;

    ZOL_FRAMEWORK_NOINLINE void grow(std::size_t size) {
        std::size_t larger = capacity_ * 2;
        if (larger < size_ + size) {
            larger = size_ + size;
        }
        const bool wasIncomplete = incomplete_;
        incomplete_ = true; // stays set if the allocation throws
        char* const begin = new char[larger + 1];
        incomplete_ = wasIncomplete;
        std::memcpy(begin, begin_, size_);
        if (begin_ != inline_) {
            delete[] begin_;
        }
        begin_ = begin;
        capacity_ = larger;
    }

    char* begin_ = inline_;
    std::size_t size_ = 0;
    std::size_t capacity_ = inlineSize; // without the terminating zero
    char inline_[inlineSize + 1];
    bool incomplete_ = false;
};

} // namespace ZOL::Framework::GenericLogger::detail
