#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <new>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#if defined(__GLIBCXX__)
#include <cxxabi.h>
#endif

#include "ZOL/Framework/Export.h"
#include "ZOL/Framework/GenericLogger/detail/LineBuffer.h"
#include "ZOL/Framework/GenericLogger/detail/LineFormatter.h"

namespace ZOL::Framework::GenericLogger::detail {

/// Accepts everything that can be written to a std::ostream, and produces the same text as a
/// std::ostringstream in the classic locale. Texts, characters, numbers and addresses are appended
/// directly until the std::ostream is needed: for a manipulator, a user-defined type or stream().
///
/// The exceptions from a std::ostringstream: a null C string is written as "(null)". An insertion
/// that fails leaves what it has written, and later insertions are appended to that. It fails
/// quietly, whether it sets the state of the std::ostream or throws; only std::bad_alloc is passed
/// on.
class TextStream {
public:
    /// Types that an insertion takes by value, so that bit-fields and constants without a
    /// definition are accepted.
    template <typename T>
    static constexpr bool isPassedByValue = std::is_arithmetic_v<T> || std::is_enum_v<T>;

    TextStream() noexcept {}
    explicit TextStream(std::string_view text) { line_.append(text.data(), text.size()); }
    explicit TextStream(const char* text) : TextStream(viewOf(text)) {}
    TextStream(const TextStream&) = delete;
    TextStream& operator=(const TextStream&) = delete;
    ~TextStream() {
        if (formatter_ != nullptr) {
            formatter_->~LineFormatter();
        }
    }

    // Each overload accepts exactly its type. A type that only converts to it may have an insertion
    // operator of its own and selects one of the templates.
    TextStream& operator<<(bool value) {
        return isFormatted() ? format(value) : append(value ? "1" : "0", 1);
    }
    ZOL_FRAMEWORK_NOINLINE TextStream& operator<<(char character) {
        if (isFormatted()) {
            stream() << character;
        } else {
            line_.append(&character, 1);
        }
        return *this;
    }
    TextStream& operator<<(signed char character) { return *this << static_cast<char>(character); }
    TextStream& operator<<(unsigned char character) {
        return *this << static_cast<char>(character);
    }
    TextStream& operator<<(short value) { return appendInteger(value); }
    TextStream& operator<<(unsigned short value) { return appendInteger(value); }
    TextStream& operator<<(int value) { return appendInteger(value); }
    TextStream& operator<<(unsigned value) { return appendInteger(value); }
    TextStream& operator<<(long value) { return appendInteger(value); }
    TextStream& operator<<(unsigned long value) { return appendInteger(value); }
    TextStream& operator<<(long long value) { return appendInteger(value); }
    TextStream& operator<<(unsigned long long value) { return appendInteger(value); }
    TextStream& operator<<(float value) { return *this << static_cast<double>(value); }
    ZOL_FRAMEWORK_NOINLINE inline TextStream& operator<<(double value);
    TextStream& operator<<(const void* address);
    TextStream& operator<<(void* address) { return *this << static_cast<const void*>(address); }
    TextStream& operator<<(const char* text) { return *this << viewOf(text); }
    TextStream& operator<<(char* text) { return *this << static_cast<const char*>(text); }
    TextStream& operator<<(std::string_view text) { return append(text.data(), text.size()); }

    template <typename Value, std::enable_if_t<isPassedByValue<Value>, int> = 0>
    TextStream& operator<<(Value value) {
        return insert(value);
    }

    template <typename Value, std::enable_if_t<!isPassedByValue<std::decay_t<Value>>, int> = 0>
    TextStream& operator<<(Value&& value) {
        using Type = std::decay_t<Value>;
        if constexpr (std::is_same_v<Type, std::string>) {
            return append(value.data(), value.size());
        } else if constexpr (isText<Type, signed char> || isText<Type, unsigned char>) {
            const auto* const text = static_cast<std::remove_pointer_t<Type> const*>(value);
            return *this << reinterpret_cast<const char*>(text);
        } else {
            return insert(std::forward<Value>(value));
        }
    }

    TextStream& operator<<(std::ostream& (*manipulator)(std::ostream&)) {
        return insert(manipulator);
    }
    TextStream& operator<<(std::ios& (*manipulator)(std::ios&)) { return insert(manipulator); }
    TextStream& operator<<(std::ios_base& (*manipulator)(std::ios_base&)) {
        return insert(manipulator);
    }

    /// Returns the std::ostream that appends to this text, in a good state. Its flags apply to all
    /// later insertions.
    ZOL_FRAMEWORK_NOINLINE std::ostream& stream() {
        if (formatter_ == nullptr) {
            formatter_ = new (formatterStorage_) LineFormatter(line_);
        }
        return formatter_->stream();
    }
    operator std::ostream&() { return stream(); }

    /// Appends the text as it is: width and other flags of the std::ostream do not apply.
    void appendUnformatted(std::string_view text) { line_.append(text.data(), text.size()); }

    /// Returns whether a part of the text is missing because there was no memory for it.
    bool isIncomplete() const { return line_.isIncomplete(); }

    std::string_view view() const { return line_.view(); }
    std::string str() const { return std::string(view()); }

    /// Returns the zero-terminated text, valid until the next insertion.
    const char* c_str() { return line_.c_str(); }

private:
    template <typename Type, typename Character>
    static constexpr bool isText =
        std::is_same_v<Type, Character*> || std::is_same_v<Type, const Character*>;

    static std::string_view viewOf(const char* text) {
        return text != nullptr ? std::string_view(text) : std::string_view("(null)");
    }

    // If true, every insertion uses the std::ostream, because its flags may be set.
    bool isFormatted() const { return formatter_ != nullptr; }

    template <typename Value>
    TextStream& insert(Value&& value) {
        try {
            stream() << std::forward<Value>(value);
        } catch (...) {
            ignoreFailedInsertion();
        }
        return *this;
    }

    // Called by a handler. Rethrows what is not the failure of an insertion.
    ZOL_FRAMEWORK_NOINLINE static void ignoreFailedInsertion() {
        try {
            throw;
        } catch (const std::bad_alloc&) {
            throw;
#if defined(__GLIBCXX__)
        } catch (const abi::__forced_unwind&) {
            throw; // the thread ends: it was cancelled or called pthread_exit
#endif
        } catch (...) { // NOLINT(bugprone-empty-catch): the line keeps what was written
        }
    }

    template <typename Value>
    TextStream& format(Value value) {
        stream().operator<<(value);
        return *this;
    }

    ZOL_FRAMEWORK_NOINLINE TextStream& append(const char* text, std::size_t size) {
        if (isFormatted()) {
            stream() << std::string_view(text, size);
        } else {
            line_.append(text, size);
        }
        return *this;
    }

    template <typename Integer>
    ZOL_FRAMEWORK_NOINLINE TextStream& appendInteger(Integer value) {
        if (isFormatted()) {
            return format(value);
        }
        char text[20]; // 18446744073709551615, -9223372036854775808
        char* const end = text + sizeof text;
        const auto number = static_cast<unsigned long long>(value);
        char* begin = writeDigits<10>(value < 0 ? 0 - number : number, end);
        if (value < 0) {
            *--begin = '-';
        }
        line_.append(begin, static_cast<std::size_t>(end - begin));
        return *this;
    }

    // std::to_chars would double the compile time of a line by its templates for every base.
    template <unsigned base>
    static char* writeDigits(unsigned long long number, char* end) {
        do {
            *--end = "0123456789abcdef"[number % base];
            number /= base;
        } while (number != 0);
        return end;
    }

    LineBuffer line_;
    LineFormatter* formatter_ = nullptr;
    alignas(LineFormatter) unsigned char formatterStorage_[sizeof(LineFormatter)];
};

TextStream& TextStream::operator<<(double value) {
    // Standard libraries differ in the sign of infinities and NaNs.
    if (isFormatted() || !(value - value == 0)) {
        return format(value);
    }
    constexpr std::size_t maxSize = 16; // -1.23457e-308
    constexpr int precision = 6;        // precision and format are a std::ostream's defaults
    // An exact tie is rounded to even, as IEEE 754 says: 123456.5 becomes 123456. After a
    // manipulator, a std::ostream writes the number. That of Visual C++ asks the C runtime, which
    // rounds ties away from zero on Windows before version 2004.
    char* const begin = line_.prepare(maxSize);
    line_.commit(
        std::to_chars(begin, begin + maxSize, value, std::chars_format::general, precision).ptr);
    return *this;
}

inline TextStream& TextStream::operator<<(const void* address) {
#if defined(__GLIBCXX__)
    if (!isFormatted()) {
        char text[18]; // 0xffffffffffffffff
        char* const end = text + sizeof text;
        char* begin = writeDigits<16>(reinterpret_cast<std::uintptr_t>(address), end);
        if (address != nullptr) {
            *--begin = 'x';
            *--begin = '0';
        }
        line_.append(begin, static_cast<std::size_t>(end - begin));
        return *this;
    }
#endif
    return format(address); // each standard library has its own format
}

} // namespace ZOL::Framework::GenericLogger::detail
