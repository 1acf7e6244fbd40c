#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::GenericLogger::detail {

/// The characters of a line: the first few hundred in place, more than that on the heap.
class LineBuffer {
public:
    LineBuffer() noexcept {} // the characters are not worth initialising
    LineBuffer(const LineBuffer&) = delete;
    LineBuffer& operator=(const LineBuffer&) = delete;
    ~LineBuffer() {
        if (begin_ != inPlace_) {
            delete[] begin_;
        }
    }

    void append(const char* text, std::size_t size) {
        std::memcpy(room(size), text, size);
        size_ += size;
    }

    /// Where the next characters go, with room for so many; extendTo takes those written there.
    char* room(std::size_t size) {
        if (size > capacity_ - size_) {
            grow(size);
        }
        return begin_ + size_;
    }
    void extendTo(const char* end) { size_ = static_cast<std::size_t>(end - begin_); }

    /// Characters are missing, since the memory for them was.
    bool isIncomplete() const { return incomplete_; }

    std::string_view view() const { return {begin_, size_}; }

    /// Zero-terminated, and valid until the next character comes.
    const char* c_str() {
        begin_[size_] = '\0';
        return begin_;
    }

private:
    static constexpr std::size_t inPlaceSize = 400;

    ZOL_FRAMEWORK_NOINLINE void grow(std::size_t size) {
        std::size_t larger = capacity_ * 2;
        if (larger < size_ + size) {
            larger = size_ + size;
        }
        incomplete_ = true; // unless the next line gets past its allocation
        char* const begin = new char[larger + 1];
        incomplete_ = false;
        std::memcpy(begin, begin_, size_);
        if (begin_ != inPlace_) {
            delete[] begin_;
        }
        begin_ = begin;
        capacity_ = larger;
    }

    char* begin_ = inPlace_;
    std::size_t size_ = 0;
    std::size_t capacity_ = inPlaceSize; // beside the terminating zero
    char inPlace_[inPlaceSize + 1];
    bool incomplete_ = false;
};

} // namespace ZOL::Framework::GenericLogger::detail
