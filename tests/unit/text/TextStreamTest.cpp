#include "ZOL/Framework/GenericLogger/detail/TextStream.h"

#include <cmath>
#include <cstdint>
#include <iomanip>
#include <ios>
#include <limits>
#include <locale>
#include <new>
#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "ClassicText.h"
#include "GuardedArrays.h"
#include "Insertion.h"

using ZOL::Framework::GenericLogger::detail::TextStream;

namespace {

// Compares a chain of insertions with a std::ostringstream. Parentheses would make one value of it.
//
// NOLINTBEGIN(bugprone-macro-parentheses)
#define EXPECT_CLASSIC(insertions)                                                                 \
    EXPECT_EQ(text::textOf([&](auto& stream) { stream << insertions; }),                           \
              text::classicTextOf([&](auto& stream) { stream << insertions; }))
// NOLINTEND(bugprone-macro-parentheses)

/// One value with default flags, and with flags each of which affects some type.
template <typename Value>
void expectClassic(const Value& value) {
    EXPECT_CLASSIC(value);
    EXPECT_CLASSIC(value << std::hex << value << std::setw(12) << std::setfill('*') << value
                         << value);
    EXPECT_CLASSIC(std::showpos << std::showbase << std::oct << std::left << std::setw(9) << value
                                << std::boolalpha << value << std::uppercase << std::fixed
                                << std::setprecision(3) << value);
}

template <typename Value>
void expectClassicAtItsLimits() {
    using Limits = std::numeric_limits<Value>;
    expectClassic(Limits::min());
    expectClassic(Limits::max());
    expectClassic(Limits::lowest());
    expectClassic(Value{});
    expectClassic(static_cast<Value>(1));
}

class CommaForAPoint : public std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(TextStreams, WriteEachIntegerAsAStreamDoes) {
    expectClassicAtItsLimits<bool>();
    expectClassicAtItsLimits<char>();
    expectClassicAtItsLimits<signed char>();
    expectClassicAtItsLimits<unsigned char>();
    expectClassicAtItsLimits<short>();
    expectClassicAtItsLimits<unsigned short>();
    expectClassicAtItsLimits<int>();
    expectClassicAtItsLimits<unsigned>();
    expectClassicAtItsLimits<long>();
    expectClassicAtItsLimits<unsigned long>();
    expectClassicAtItsLimits<long long>();
    expectClassicAtItsLimits<unsigned long long>();
}

TEST(TextStreams, WriteEachFloatingPointNumberAsAStreamDoes) {
    expectClassicAtItsLimits<float>();
    expectClassicAtItsLimits<double>();
    expectClassicAtItsLimits<long double>();
    for (const double number :
         {0.0,       -0.0,         1e-5,
          1e-4,      9.9999949e-5, 9.9999951e-5,
          0.1,       0.125,        99999.95,
          123456.0,  123456.5,     999999.4,
          999999.5,  999999.6,     1e6,
          1234567.0, 1e15,         1e16,
          1e100,     -1e-300,      std::numeric_limits<double>::denorm_min()}) {
        expectClassic(number);
        expectClassic(static_cast<float>(number));
    }
}

TEST(TextStreams, RoundAnExactTieToEvenOnEveryRuntime) {
    const auto written = [](auto number) {
        return text::textOf([&](auto& stream) { stream << number; });
    };
    EXPECT_EQ(written(123456.5), "123456");
    EXPECT_EQ(written(123457.5), "123458");
    EXPECT_EQ(written(-123456.5), "-123456");
    EXPECT_EQ(written(1234565.0), "1.23456e+06");
    EXPECT_EQ(written(1234575.0), "1.23458e+06");
    EXPECT_EQ(written(1748.125), "1748.12");
    EXPECT_EQ(written(123456.5F), "123456");
}

TEST(TextStreams, WriteNumbersThatAreNotFiniteAsAStreamDoes) {
    for (const double number :
         {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
        expectClassic(number);
        expectClassic(std::copysign(number, -1.0));
        expectClassic(static_cast<float>(number));
    }
}

TEST(TextStreams, WriteAddressesAsAStreamDoes) {
    const int object = 0;
    expectClassic(&object);
    expectClassic(static_cast<const void*>(&object));
    expectClassic(static_cast<void*>(nullptr));
    expectClassic(nullptr);
    const std::vector<std::uint8_t> allBits(sizeof(void*), 0xFF);
    expectClassic(text::InsertionInput(allBits.data(), allBits.size()).value<const void*>());
}

TEST(TextStreams, WriteTextsOfEveryKindAsAStreamDoes) {
    char array[20] = "array";
    expectClassic("literal");
    expectClassic(static_cast<const char*>(array));
    expectClassic(std::string("with a zero \0 inside", 20));
    expectClassic(std::string_view("view and more", 4));
    expectClassic(reinterpret_cast<const signed char*>("signed"));
    expectClassic(reinterpret_cast<const unsigned char*>("unsigned"));
    EXPECT_CLASSIC(array << static_cast<char*>(array));
}

TEST(TextStreams, WriteTypesOfTheUsersOwn) {
    expectClassic(text::Point{3, 4.5});
    expectClassic(text::plain);
    expectClassic(text::LikeAText());
    EXPECT_EQ(text::textOf([](auto& stream) { stream << text::Point{3, 4.5}; }), "(   3, 4.5)");
    EXPECT_EQ(text::textOf([](auto& stream) { stream << text::Temporary{7}; }), "7");
}

TEST(TextStreams, TakeBitFields) {
    struct {
        unsigned small : 3;
        int negative : 5;
        bool flag : 1;
        char character : 8;
        unsigned long long large : 60;
        text::Plain enumerator : 4;
    } fields = {5, -9, true, 'c', 123456789012, text::plain}; // no reference binds to these
    const auto insertions = [&](auto& stream) {
        stream << fields.small << fields.negative << fields.flag << fields.character << fields.large
               << fields.enumerator << std::hex << fields.small << fields.negative << fields.large;
    };
    EXPECT_EQ(text::textOf(insertions).substr(0, 17), "5-91c123456789012");
    EXPECT_EQ(text::textOf(insertions), text::classicTextOf(insertions));
}

TEST(TextStreams, TakeConstantsThatAreOnlyDeclared) {
    EXPECT_EQ(text::textOf([](auto& stream) {
                  stream << text::Declared::number << text::Declared::enumerator;
              }),
              "177");
}

TEST(TextStreams, WorkWithAFunctionThatTakesAStreamAndKeepItsSettings) {
    const auto insertions = [](auto& stream) {
        stream << "before " << 1.2345678;
        text::functionOnAStream(stream);
        stream << 1.2345678;
    };
    EXPECT_EQ(text::textOf(insertions), "before 1.23457<    12raw1.234568");
    EXPECT_EQ(text::textOf(insertions), text::classicTextOf(insertions));
}

TEST(TextStreams, DestroyTheirStreamOnceSoThatItReleasesWhatItStores) {
    int erased = 0;
    {
        TextStream stream;
        const int index = std::ios_base::xalloc();
        stream.stream().pword(index) = &erased;
        stream.stream().register_callback(
            [](std::ios_base::event event, std::ios_base& base, int place) {
                if (event == std::ios_base::erase_event) {
                    ++*static_cast<int*>(base.pword(place));
                }
            },
            index);
        stream << 1;
        EXPECT_EQ(erased, 0);
    }
    EXPECT_EQ(erased, 1);
}

TEST(TextStreams, KeepTheFlagsThatAManipulatorSet) {
    EXPECT_EQ(text::textOf([](auto& stream) {
                  stream << 255 << std::hex << 255 << true << std::boolalpha << true << ' '
                         << std::setw(4) << std::setfill('.') << 'c' << 255;
              }),
              "255ff1true ...cff");
}

TEST(TextStreams, GrowPastEveryLengthAtEveryCharacter) {
    for (const std::size_t length : {398U, 399U, 400U, 401U, 402U, 799U, 800U, 801U, 100000U}) {
        const std::string text(length, 'x');
        EXPECT_CLASSIC(text << 'y' << -1234567 << text << 2.5 << std::hex << text << 255);
        EXPECT_EQ(text::textOf([&](auto& stream) { stream << text << 'y'; }), text + 'y');
    }
    // Crosses the end of the buffer one character at a time.
    const auto bits = [](auto& stream) {
        for (int i = 0; i < 3000; ++i) {
            stream << (i % 2 == 0) << 'c' << i;
        }
    };
    EXPECT_EQ(text::textOf(bits), text::classicTextOf(bits));
}

TEST(TextStreams, TerminateTheirTextWithAZeroAtEveryLength) {
    TextStream stream;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        EXPECT_EQ(stream.c_str(), expected);
        stream << 'z';
        expected += 'z';
    }
}

TEST(TextStreams, UseTheClassicLocaleAndNotTheProgramsOwn) {
    const std::locale before =
        std::locale::global(std::locale(std::locale::classic(), new CommaForAPoint));
    const std::string text = text::textOf([](auto& stream) {
        stream << 1234567 << ' ' << 1.5 << ' ' << std::setw(9) << 7654321 << ' ' << 2.5;
    });
    std::locale::global(before);
    EXPECT_EQ(text, "1234567 1.5   7654321 2.5");
}

TEST(TextStreams, WriteAThirdOfAMillionRandomLinesAsAStreamDoes) {
    constexpr int lines = 333333;
    constexpr int mostBytes = 60;
    std::mt19937_64 random(1);
    std::vector<std::uint8_t> bytes;
    for (int line = 0; line < lines; ++line) {
        bytes.resize(random() % mostBytes);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random());
        }
        const auto insertions = [&](auto& stream) {
            text::insertAll(stream, text::InsertionInput(bytes.data(), bytes.size()));
        };
        ASSERT_EQ(text::textOf(insertions), text::classicTextOf(insertions)) << "line " << line;
    }
}

TEST(TextStreams, WriteANullTextAsNull) {
    const auto insertNulls = [](auto& stream) {
        stream << static_cast<const char*>(nullptr) << static_cast<char*>(nullptr)
               << static_cast<const signed char*>(nullptr) << static_cast<signed char*>(nullptr)
               << static_cast<const unsigned char*>(nullptr)
               << static_cast<unsigned char*>(nullptr);
    };
    std::string nulls;
    for (int i = 0; i < 6; ++i) {
        nulls += "(null)";
    }
    EXPECT_EQ(text::textOf(insertNulls), nulls);
    EXPECT_EQ(TextStream(static_cast<const char*>(nullptr)).view(), "(null)");
    EXPECT_EQ(text::textOf([](auto& stream) {
                  stream << std::setw(8) << static_cast<const char*>(nullptr) << "."
                         << static_cast<const unsigned char*>(nullptr);
              }),
              "  (null).(null)");
}

TEST(TextStreams, AcceptAnEmptyViewWithoutCharacters) {
    EXPECT_EQ(text::textOf([](auto& stream) {
                  stream << std::string_view() << "a" << std::hex << std::string_view() << "b";
                  stream.stream().write(nullptr, 0);
              }),
              "ab");
    EXPECT_EQ(TextStream(std::string_view()).view(), "");
}

// Writes "<", fails, and would write ">".
struct Failing {
    std::ios_base::iostate state;
};

std::ostream& operator<<(std::ostream& stream, const Failing& failing) {
    stream << "<";
    stream.setstate(failing.state);
    return stream << ">";
}

struct Throwing {};

std::ostream& operator<<(std::ostream& stream, const Throwing&) {
    stream << "<";
    throw std::runtime_error("no text");
}

struct OutOfMemory {};

std::ostream& operator<<(std::ostream& stream, const OutOfMemory&) {
    stream << "<";
    throw std::bad_alloc();
}

TEST(TextStreams, GoOnAfterAFailedInsertion) {
    for (const std::ios_base::iostate state :
         {std::ios_base::badbit, std::ios_base::failbit, std::ios_base::eofbit,
          std::ios_base::badbit | std::ios_base::failbit}) {
        EXPECT_EQ(text::textOf([&](auto& stream) {
                      stream << "a" << Failing{state} << 1 << Failing{state} << "b" << std::hex
                             << 255;
                  }),
                  "a<1<bff");
    }
}

TEST(TextStreams, GoOnAfterAnInsertionThatThrew) {
    const auto throwingManipulator = [](std::ostream& stream) -> std::ostream& {
        stream << "m";
        throw 7;
    };
    EXPECT_EQ(text::textOf([&](auto& stream) {
                  stream << "a" << Throwing() << 1 << +throwingManipulator << "b";
              }),
              "a<1mb");
}

TEST(TextStreams, GoOnAfterAFailureInTheirStdOstream) {
    TextStream stream;
    stream << "a";
    stream.stream().setstate(std::ios_base::badbit);
    stream << "b";
    stream.stream() << Failing{std::ios_base::failbit};
    stream.stream() << "c";
    EXPECT_EQ(stream.view(), "ab<c");
    EXPECT_FALSE(stream.isIncomplete());
}

TEST(TextStreams, PassOnTheLackOfMemoryOfAnInsertion) {
    TextStream stream;
    stream << "a";
    EXPECT_THROW(stream << OutOfMemory(), std::bad_alloc);
    stream << "b";
    EXPECT_EQ(stream.view(), "a<b");
}

#if ZOL_TEST_GUARDED_ARRAYS

TEST(TextStreams, PassOnTheLackOfMemoryForTheLineAndFailQuietlyAfterIt) {
    const std::string longText(1000, 'x');
    TextStream stream;
    stream << "a" << std::hex;
    support::GuardedArrays::fail(true);
    EXPECT_THROW(stream << longText, std::bad_alloc);
    EXPECT_THROW(stream.stream() << longText, std::bad_alloc);
    support::GuardedArrays::fail(false);
    EXPECT_TRUE(stream.isIncomplete());
    EXPECT_NO_THROW(stream.stream().setstate(std::ios_base::badbit));
    stream << "b";
    EXPECT_EQ(stream.view(), "ab");
}

#endif

} // namespace
