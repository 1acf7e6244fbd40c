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

#include "ZOL/Framework/GenericLogger/LineBuffer.h"
#include "ZOL/Framework/GenericLogger/LineFormatter.h"

namespace ZOL::Framework::GenericLogger {

/// Takes whatever can be written to a std::ostream, and makes the text that a std::ostringstream in
/// the classic locale would make of it. Texts, characters, numbers and addresses go straight into
/// the line until something needs the std::ostream: a manipulator, a type of the user's, stream().
class TextStream {
public:
    TextStream() noexcept {}
    TextStream(const TextStream&) = delete;
    TextStream& operator=(const TextStream&) = delete;
    ~TextStream() {
        if (formatter_ != nullptr) {
            formatter_->~LineFormatter();
        }
    }

    template <typename Value>
    TextStream& operator<<(Value&& value) {
        if constexpr (isWrittenDirectly<std::decay_t<Value>>) {
            write(value);
        } else {
            stream() << std::forward<Value>(value);
        }
        return *this;
    }

    TextStream& operator<<(const char* text) {
        write(text);
        return *this;
    }

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
        if (formatter_ == nullptr) {
            formatter_ = new (formatterPlace_) LineFormatter(line_);
        }
        return formatter_->stream();
    }
    operator std::ostream&() { return stream(); }

    /// An insertion could not be finished, so that only a part of its text is here.
    bool bad() const {
        return line_.isIncomplete() || (formatter_ != nullptr && formatter_->isBad());
    }

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

    // Each goes through the std::ostream once there is one: its flags may be of consequence.

    void write(std::string_view text) {
        if (formatter_ != nullptr) {
            stream() << text;
        } else {
            line_.append(text.data(), text.size());
        }
    }

    void write(const char* text) {
        if (text == nullptr) {
            stream().setstate(std::ios_base::badbit); // as a std::ostream does; it throws
        } else {
            write(std::string_view(text));
        }
    }
    void write(const signed char* text) { write(reinterpret_cast<const char*>(text)); }
    void write(const unsigned char* text) { write(reinterpret_cast<const char*>(text)); }

    void write(char character) { write(std::string_view(&character, 1)); }
    void write(signed char character) { write(static_cast<char>(character)); }
    void write(unsigned char character) { write(static_cast<char>(character)); }

    void write(bool value) {
        if (formatter_ != nullptr) {
            stream().operator<<(value);
        } else {
            write(value ? '1' : '0');
        }
    }

    template <typename Integer, std::enable_if_t<std::is_integral_v<Integer>, int> = 0>
    void write(Integer value) {
        if (formatter_ != nullptr) {
            stream().operator<<(value);
        } else if (value < 0) {
            writeDigits<10>(0 - static_cast<unsigned long long>(value), "-");
        } else {
            writeDigits<10>(static_cast<unsigned long long>(value), "");
        }
    }

    // Not std::to_chars, whose templates for every base double what a line adds to compile time.
    template <unsigned base>
    void writeDigits(unsigned long long number, std::string_view prefix) {
        char text[20]; // 18446744073709551615, -9223372036854775808, 0xffffffffffffffff
        char* const end = text + sizeof text;
        char* first = end;
        do {
            *--first = "0123456789abcdef"[number % base];
            number /= base;
        } while (number != 0);
        for (std::size_t i = prefix.size(); i > 0; --i) {
            *--first = prefix[i - 1];
        }
        line_.append(first, static_cast<std::size_t>(end - first));
    }

    void write(double value) {
        // Whether one that is not finite shows its sign is the stream's own affair.
        if (formatter_ != nullptr || !(value - value == 0)) {
            stream().operator<<(value);
            return;
        }
        constexpr std::size_t most = 16; // -1.23457e-308
        constexpr int precision = 6;     // a stream's own, as is the format
        char* const begin = line_.room(most);
        line_.extendTo(
            std::to_chars(begin, begin + most, value, std::chars_format::general, precision).ptr);
    }

    void write(const void* address) {
#if defined(__GLIBCXX__)
        if (formatter_ == nullptr) {
            const auto number = reinterpret_cast<std::uintptr_t>(address);
            writeDigits<16>(number, address != nullptr ? "0x" : "");
            return;
        }
#endif
        stream().operator<<(address); // looks different in each standard library
    }

    LineBuffer line_;
    LineFormatter* formatter_ = nullptr;
    alignas(LineFormatter) unsigned char formatterPlace_[sizeof(LineFormatter)];
};

} // namespace ZOL::Framework::GenericLogger
