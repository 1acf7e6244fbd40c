#include "ZOL/Framework/Management/UnitOrder.h"

#include <cstddef>
#include <random>

#include <gtest/gtest.h>

using namespace ZOL::Framework::Management;

namespace {

using Unit = WideString::value_type;

void expectTheStringsOwnOrder(const WideString& left, const WideString& right) {
    const UnitOrder order;
    EXPECT_EQ(order(left, right), left < right);
    EXPECT_EQ(order(right, left), right < left);
}

TEST(UnitOrders, AreThoseOfTheStringsForADifferenceAtAnyUnit) {
    constexpr std::size_t longest = 13;
    // A byte that differs, the sign, the zero unit, and no difference.
    for (const Unit unit :
         {Unit{'b'}, Unit{0x0161}, Unit{0x8061}, Unit{0xFFFF}, Unit{0}, Unit{'a'}}) {
        for (std::size_t length = 1; length <= longest; ++length) {
            for (std::size_t place = 0; place < length; ++place) {
                const WideString plain(length, Unit{'a'});
                WideString other = plain;
                other[place] = unit;
                expectTheStringsOwnOrder(plain, other);
                other.back() = Unit{'a'};
                expectTheStringsOwnOrder(plain, other);
            }
        }
    }
}

TEST(UnitOrders, PutTheShorterFirstIfTheLongerBeginsWithIt) {
    constexpr std::size_t longest = 13;
    for (std::size_t left = 0; left <= longest; ++left) {
        for (std::size_t right = 0; right <= longest; ++right) {
            expectTheStringsOwnOrder(WideString(left, Unit{0}), WideString(right, Unit{0}));
        }
    }
}

TEST(UnitOrders, AreThoseOfTheStringsForRandomOnes) {
    constexpr int pairs = 100000;
    constexpr std::size_t longest = 13;
    std::mt19937 random(1);
    const auto make = [&] {
        WideString text(random() % longest, Unit{0});
        for (Unit& unit : text) {
            unit = random() % 8 != 0 ? Unit{'x'} : static_cast<Unit>(random());
        }
        return text;
    };
    for (int i = 0; i < pairs; ++i) {
        const WideString left = make();
        expectTheStringsOwnOrder(left, make());
    }
}

} // namespace
