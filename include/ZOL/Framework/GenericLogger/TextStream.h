#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "ZOL/Framework/GenericLogger/LineBuffer.h"
#include "ZOL/Framework/GenericLogger/LineFormatter.h"

namespace ZOL::Framework::GenericLogger {

/// Takes whatever can be written to a std::ostream, and makes the text that a std::ostringstream in
/// the classic locale would make of it. Texts, characters, numbers and addresses go straight into
/// the line until something needs the std::ostream: a manipulator, a type of the user's, stream().
class TextStream {
public:
    TextStream() = default;
    TextStream(const TextStream&) = delete;
    TextStream& operator=(const TextStream&) = delete;

    template <typename Value>
    TextStream& operator<<(Value&& value) {
        if constexpr (isWrittenDirectly<std::decay_t<Value>>) {
            if (!formatter_) {
                write(value);
                return *this;
            }
        }
        stream() << std::forward<Value>(value);
        return *this;
    }

    TextStream& operator<<(const char* text) { return operator<< <const char*&>(text); }

    TextStream& operator<<(std::ostream& (*manipulator)(std::ostream&)) {
        stream() << manipulator;
        return *this;
    }

    TextStream& operator<<(std::ios& (*manipulator)(std::ios&)) {
        stream() << manipulator;
        return *this;
    }

    TextStream& operator<<(std::ios_base& (*manipulator)(std::ios_base&)) {
        stream() << manipulator;
        return *this;
    }

    /// For whatever works on a std::ostream. Flags that are set there hold for all that follows.
    /// A failure that sets badbit throws.
    std::ostream& stream() {
        if (!formatter_) {
            formatter_.emplace(line_);
        }
        return formatter_->stream();
    }
    operator std::ostream&() { return stream(); }

    /// An insertion could not be finished, so that only a part of its text is here.
    bool bad() const { return line_.isIncomplete() || (formatter_ && formatter_->isBad()); }

    std::string_view view() const { return line_.view(); }
    std::string str() const { return std::string(view()); }

    /// Zero-terminated, and valid until the next insertion.
    const char* c_str() { return line_.c_str(); }

private:
    template <typename T, typename... Types>
    static constexpr bool isOneOf = (std::is_same_v<T, Types> || ...);

    // Exactly these: what merely converts to one of them may have an insertion of its own.
    template <typename T>
    static constexpr bool isWrittenDirectly =
        isOneOf<T, bool, char, signed char, unsigned char, short, unsigned short, int, unsigned,
                long, unsigned long, long long, unsigned long long, float, double, char*,
                const char*, signed char*, const signed char*, unsigned char*, const unsigned char*,
                void*, const void*, std::string, std::string_view>;

    void write(std::string_view text) { line_.append(text.data(), text.size()); }

    void write(const char* text) {
        if (text == nullptr) {
            stream() << text; // a failure, and told as one
            return;
        }
        line_.append(text, std::strlen(text));
    }
    void write(const signed char* text) { write(reinterpret_cast<const char*>(text)); }
    void write(const unsigned char* text) { write(reinterpret_cast<const char*>(text)); }

    void write(bool value) { write(value ? '1' : '0'); }
    void write(char character) { line_.append(&character, 1); }
    void write(signed char character) { write(static_cast<char>(character)); }
    void write(unsigned char character) { write(static_cast<char>(character)); }

    template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
    void write(Integer value) {
        constexpr std::size_t most = 20; // -9223372036854775808
        char* const begin = line_.room(most);
        line_.extendTo(std::to_chars(begin, begin + most, value).ptr);
    }

    void write(double value) {
        // Whether one that is not finite shows its sign is the stream's own affair.
        if (!(value - value == 0)) {
            stream() << value;
            return;
        }
        constexpr std::size_t most = 16; // -1.23457e-308
        constexpr int precision = 6;     // a stream's own, as is the format
        char* const begin = line_.room(most);
        line_.extendTo(
            std::to_chars(begin, begin + most, value, std::chars_format::general, precision).ptr);
    }

    void write(const void* address) {
#if !defined(__GLIBCXX__)
        stream() << address; // looks different in each standard library
#else
        constexpr std::size_t most = 18; // 0xffffffffffffffff
        constexpr int hexadecimal = 16;
        char* const begin = line_.room(most);
        char* digits = begin;
        if (address != nullptr) {
            *digits++ = '0';
            *digits++ = 'x';
        }
        line_.extendTo(std::to_chars(digits, begin + most,
                                     reinterpret_cast<std::uintptr_t>(address), hexadecimal)
                           .ptr);
#endif
    }

    LineBuffer line_;
    std::optional<LineFormatter> formatter_;
};

} // namespace ZOL::Framework::GenericLogger
