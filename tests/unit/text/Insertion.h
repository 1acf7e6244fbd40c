#pragma once

#include <complex>
#include <cstddef>
#include <iomanip>
#include <ios>
#include <ostream>
#include <string>
#include <string_view>

#include "InsertionInput.h"

namespace text {

struct Point {
    int x;
    double y;
};

inline std::ostream& operator<<(std::ostream& stream, const Point& point) {
    return stream << "(" << std::setw(4) << point.x << ", " << point.y << ")";
}

enum Plain { plain = 7 };

/// Declared constants without a definition.
struct Declared {
    static const int number = 17;
    static const Plain enumerator = plain;
};

/// Can be inserted as a temporary only.
struct Temporary {
    int number;
};

inline std::ostream& operator<<(std::ostream& stream, Temporary&& temporary) {
    return stream << temporary.number;
}

struct LikeAText {
    operator const char*() const { return "like a text"; }
};

inline void functionOnAStream(std::ostream& stream) {
    stream.put('<');
    stream.width(6);
    stream << 12;
    stream.write("raw", 3);
    stream.precision(stream.precision() + 1);
}

/// Writes one value. Its type and content depend on the input alone, not on the stream.
template <typename Stream>
void insertValue(Stream& stream, InsertionInput& input) {
    switch (input.below(30)) {
    case 0:
        stream << (input.below(2) == 1);
        break;
    case 1:
        stream << input.value<char>();
        break;
    case 2:
        stream << input.value<signed char>();
        break;
    case 3:
        stream << input.value<unsigned char>();
        break;
    case 4:
        stream << input.integer<short>();
        break;
    case 5:
        stream << input.integer<unsigned short>();
        break;
    case 6:
        stream << input.integer<int>();
        break;
    case 7:
        stream << input.integer<unsigned>();
        break;
    case 8:
        stream << input.integer<long>();
        break;
    case 9:
        stream << input.integer<unsigned long>();
        break;
    case 10:
        stream << input.integer<long long>();
        break;
    case 11:
        stream << input.integer<unsigned long long>();
        break;
    case 12:
        stream << input.value<float>();
        break;
    case 13:
        stream << static_cast<float>(input.integer<int>()) / 8;
        break;
    case 14:
        stream << input.number();
        break;
    case 15:
        stream << static_cast<long double>(input.number());
        break;
    case 16:
        stream << "literal";
        break;
    case 17:
        stream << input.text().c_str();
        break;
    case 18:
        stream << reinterpret_cast<const signed char*>(input.text().c_str());
        break;
    case 19:
        stream << reinterpret_cast<const unsigned char*>(input.text().c_str());
        break;
    case 20:
        stream << input.text();
        break;
    case 21: {
        std::string text = input.text();
        char array[] = "array";
        stream << text << std::string_view(text) << text.data() << array;
        break;
    }
    case 22:
        stream << static_cast<const void*>(input.address());
        break;
    case 23:
        stream << input.address();
        break;
    case 24:
        stream << static_cast<const int*>(nullptr) << nullptr;
        break;
    case 25:
        stream << plain << LikeAText();
        break;
    case 26:
        stream << Point{input.integer<int>(), input.number()};
        break;
    case 27:
        stream << std::complex<double>(1, input.number());
        break;
    case 28:
        stream << L'w' << static_cast<volatile char*>(nullptr);
        break;
    default:
        functionOnAStream(stream);
        break;
    }
}

/// Inserts a manipulator.
template <typename Stream>
void manipulate(Stream& stream, InsertionInput& input) {
    constexpr std::size_t widths = 30;
    constexpr std::size_t precisions = 25;
    switch (input.below(30)) {
    case 0:
        stream << std::hex;
        break;
    case 1:
        stream << std::oct;
        break;
    case 2:
        stream << std::dec;
        break;
    case 3:
        stream << std::showbase;
        break;
    case 4:
        stream << std::noshowbase;
        break;
    case 5:
        stream << std::showpos;
        break;
    case 6:
        stream << std::noshowpos;
        break;
    case 7:
        stream << std::showpoint;
        break;
    case 8:
        stream << std::noshowpoint;
        break;
    case 9:
        stream << std::uppercase;
        break;
    case 10:
        stream << std::nouppercase;
        break;
    case 11:
        stream << std::boolalpha;
        break;
    case 12:
        stream << std::noboolalpha;
        break;
    case 13:
        stream << std::left;
        break;
    case 14:
        stream << std::right;
        break;
    case 15:
        stream << std::internal;
        break;
    case 16:
        stream << std::fixed;
        break;
    case 17:
        stream << std::scientific;
        break;
    case 18:
        stream << std::hexfloat;
        break;
    case 19:
        stream << std::defaultfloat;
        break;
    case 20:
        stream << std::endl;
        break;
    case 21:
        stream << std::flush;
        break;
    case 22:
        stream << std::ends;
        break;
    case 23:
        stream << std::setfill(input.value<char>());
        break;
    case 24:
        stream << std::setprecision(static_cast<int>(input.below(precisions)));
        break;
    case 25:
        stream << std::setiosflags(std::ios_base::showpos | std::ios_base::hex);
        break;
    case 26:
        stream << std::resetiosflags(std::ios_base::basefield);
        break;
    case 27:
        stream << std::unitbuf;
        break;
    default:
        stream << std::setw(static_cast<int>(input.below(widths)));
        break;
    }
}

/// The same input makes the same insertions into every stream. Its first byte is the number of
/// values before the first manipulator.
template <typename Stream>
void insertAll(Stream& stream, InsertionInput input) {
    constexpr std::size_t mostUntouched = 12;
    for (std::size_t untouched = input.below(mostUntouched); untouched > 0; --untouched) {
        insertValue(stream, input);
    }
    while (!input.isEmpty()) {
        if (input.below(2) == 0) {
            insertValue(stream, input);
        } else {
            manipulate(stream, input);
        }
    }
}

} // namespace text
