#pragma once

#include <complex>
#include <cstddef>
#include <iomanip>
#include <ios>
#include <ostream>
#include <string>
#include <string_view>

#include "Choices.h"

namespace text {

struct Point {
    int x;
    double y;
};

inline std::ostream& operator<<(std::ostream& stream, const Point& point) {
    return stream << "(" << std::setw(4) << point.x << ", " << point.y << ")";
}

enum Plain { plain = 7 };

/// Nothing of it has a definition to refer to.
struct Declared {
    static const int number = 17;
    static const Plain enumerator = plain;
};

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

/// Writes one value, of a type and with a content that the choices tell. None of it depends on what
/// kind of stream it is.
template <typename Stream>
void insertValue(Stream& stream, Choices& choices) {
    switch (choices.below(30)) {
    case 0:
        stream << (choices.below(2) == 1);
        break;
    case 1:
        stream << choices.value<char>();
        break;
    case 2:
        stream << choices.value<signed char>();
        break;
    case 3:
        stream << choices.value<unsigned char>();
        break;
    case 4:
        stream << choices.integer<short>();
        break;
    case 5:
        stream << choices.integer<unsigned short>();
        break;
    case 6:
        stream << choices.integer<int>();
        break;
    case 7:
        stream << choices.integer<unsigned>();
        break;
    case 8:
        stream << choices.integer<long>();
        break;
    case 9:
        stream << choices.integer<unsigned long>();
        break;
    case 10:
        stream << choices.integer<long long>();
        break;
    case 11:
        stream << choices.integer<unsigned long long>();
        break;
    case 12:
        stream << choices.value<float>();
        break;
    case 13:
        stream << static_cast<float>(choices.integer<int>()) / 8;
        break;
    case 14:
        stream << choices.number();
        break;
    case 15:
        stream << static_cast<long double>(choices.number());
        break;
    case 16:
        stream << "literal";
        break;
    case 17:
        stream << choices.text().c_str();
        break;
    case 18:
        stream << reinterpret_cast<const signed char*>(choices.text().c_str());
        break;
    case 19:
        stream << reinterpret_cast<const unsigned char*>(choices.text().c_str());
        break;
    case 20:
        stream << choices.text();
        break;
    case 21: {
        std::string text = choices.text();
        char array[] = "array";
        stream << text << std::string_view(text) << text.data() << array;
        break;
    }
    case 22:
        stream << static_cast<const void*>(choices.address());
        break;
    case 23:
        stream << choices.address();
        break;
    case 24:
        stream << static_cast<const int*>(nullptr) << nullptr;
        break;
    case 25:
        stream << plain << LikeAText();
        break;
    case 26:
        stream << Point{choices.integer<int>(), choices.number()};
        break;
    case 27:
        stream << std::complex<double>(1, choices.number());
        break;
    case 28:
        stream << L'w' << static_cast<volatile char*>(nullptr);
        break;
    default:
        functionOnAStream(stream);
        break;
    }
}

/// Changes how values are written from here on, or writes what a manipulator writes.
template <typename Stream>
void manipulate(Stream& stream, Choices& choices) {
    constexpr std::size_t widths = 30;
    constexpr std::size_t precisions = 25;
    switch (choices.below(30)) {
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
        stream << std::setfill(choices.value<char>());
        break;
    case 24:
        stream << std::setprecision(static_cast<int>(choices.below(precisions)));
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
        stream << std::setw(static_cast<int>(choices.below(widths)));
        break;
    }
}

/// The same choices make the same insertions, whatever the stream. The first of them says how many
/// values come before anything manipulates them.
template <typename Stream>
void insertAll(Stream& stream, Choices choices) {
    constexpr std::size_t mostUntouched = 12;
    for (std::size_t untouched = choices.below(mostUntouched); untouched > 0; --untouched) {
        insertValue(stream, choices);
    }
    while (!choices.isEmpty()) {
        if (choices.below(2) == 0) {
            insertValue(stream, choices);
        } else {
            manipulate(stream, choices);
        }
    }
}

} // namespace text
