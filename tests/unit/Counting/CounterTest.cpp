#include "ZOL/Framework/Counting/Counter.h"

#include <cstdint>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "CopiedByNew.h"

using ZOL::Framework::Counting::Counter;

namespace {

static_assert(sizeof(Counter) == 4, "a plain number, with no lock by it");
static_assert(std::is_standard_layout_v<Counter> && !std::is_polymorphic_v<Counter>);
static_assert(!std::is_default_constructible_v<Counter> && !std::is_copy_constructible_v<Counter>,
              "a counter can only come from the table");
static_assert(!std::is_destructible_v<Counter>, "the table owns it");
static_assert(!support::canBeCopiedByNew<Counter>);
static_assert(std::is_same_v<decltype(Counter::counter("")), Counter&>);
static_assert(std::is_same_v<decltype(std::declval<Counter&>().next()), int>);
static_assert(
    std::is_same_v<decltype(std::declval<Counter&>() = std::declval<const Counter&>()), Counter&>);

/// A counter that no other test has.
Counter& newCounter() {
    static int count = 0;
    return Counter::counter(("CounterTest." + std::to_string(++count)).c_str());
}

/// Sets a counter to any value without counting up to it.
void setTo(Counter& counter, std::int32_t value) {
    std::memcpy(static_cast<void*>(&counter), &value, sizeof(value));
}

TEST(Counters, OfOneNameAreOneObject) {
    Counter& counter = Counter::counter("CounterTest.one");
    EXPECT_EQ(&Counter::counter("CounterTest.one"), &counter);
    EXPECT_EQ(counter.next(), 0);
    EXPECT_EQ(Counter::counter("CounterTest.one").next(), 1);
}

TEST(Counters, OfDifferentNamesCountApart) {
    Counter& first = newCounter();
    Counter& second = newCounter();
    EXPECT_NE(&first, &second);
    first.next();
    first.next();
    EXPECT_EQ(second.next(), 0);
    EXPECT_EQ(first.next(), 2);
}

TEST(Counters, HaveCaseSensitiveNames) {
    Counter& lower = Counter::counter("a");
    Counter& upper = Counter::counter("A");
    EXPECT_NE(&lower, &upper);
    EXPECT_EQ(lower.next(), 0);
    EXPECT_EQ(lower.next(), 1);
    EXPECT_EQ(upper.next(), 0);
}

TEST(Counters, CompareNamesByteByByteAndByLength) {
    const std::vector<const char*> names = {"n", "n ", " n", "nn", "n\x7F", "n\xE9", "n\xC9"};
    for (const char* const name : names) {
        EXPECT_EQ(Counter::counter(name).next(), 0) << name;
    }
    for (const char* const name : names) {
        EXPECT_EQ(Counter::counter(name).next(), 1) << name;
    }
}

TEST(Counters, MayHaveTheEmptyName) {
    Counter& counter = Counter::counter("");
    EXPECT_EQ(&Counter::counter(""), &counter);
    EXPECT_NE(&Counter::counter(" "), &counter);
    EXPECT_EQ(counter.next(), 0);
    EXPECT_EQ(counter.next(), 1);
}

TEST(Counters, KeepACopyOfTheirName) {
    std::string name = "CounterTest.a name that is longer than a short string";
    Counter& counter = Counter::counter(name.c_str());
    name[0] = 'X';
    EXPECT_NE(&Counter::counter(name.c_str()), &counter);
    name[0] = 'C';
    EXPECT_EQ(&Counter::counter(name.c_str()), &counter);
}

TEST(Counters, StayAtTheirAddressWhileOthersAreCreated) {
    Counter& counter = Counter::counter("CounterTest.stays");
    for (int i = 0; i < 1000; ++i) {
        newCounter();
    }
    EXPECT_EQ(counter.next(), 0);
    EXPECT_EQ(&Counter::counter("CounterTest.stays"), &counter);
    EXPECT_EQ(Counter::counter("CounterTest.stays").next(), 1);
}

TEST(Counters, StartAt0) {
    EXPECT_EQ(newCounter().next(), 0);
}

TEST(Counters, ReturnTheValueAndThenIncrementIt) {
    Counter& counter = newCounter();
    EXPECT_EQ(counter.next(), 0);
    EXPECT_EQ(counter.next(), 1);
    EXPECT_EQ(counter.next(), 2);
}

TEST(Counters, StartAt0AgainAfterAReset) {
    Counter& counter = newCounter();
    for (int i = 0; i < 3; ++i) {
        counter.next();
    }
    counter.reset();
    EXPECT_EQ(counter.next(), 0);
    EXPECT_EQ(counter.next(), 1);

    counter.reset();
    counter.reset();
    EXPECT_EQ(counter.next(), 0);
}

TEST(Counters, AResetLeavesTheOthersAlone) {
    Counter& first = newCounter();
    Counter& second = newCounter();
    first.next();
    second.next();
    first.reset();
    EXPECT_EQ(second.next(), 1);
}

TEST(Counters, AssignmentCopiesTheValueOnly) {
    Counter& source = newCounter();
    Counter& target = newCounter();
    for (int i = 0; i < 5; ++i) {
        source.next();
    }
    target.next();
    EXPECT_EQ(&(target = source), &target);

    EXPECT_EQ(source.next(), 5);
    EXPECT_EQ(target.next(), 5);
    EXPECT_EQ(target.next(), 6);
    EXPECT_EQ(target.next(), 7);
    EXPECT_EQ(source.next(), 6);
    source.reset();
    EXPECT_EQ(target.next(), 8);
    EXPECT_EQ(source.next(), 0);
}

TEST(Counters, AssignmentLeavesNamesAndObjectsAsTheyAre) {
    Counter& source = Counter::counter("CounterTest.source");
    Counter& target = Counter::counter("CounterTest.target");
    target = source;
    EXPECT_EQ(&Counter::counter("CounterTest.source"), &source);
    EXPECT_EQ(&Counter::counter("CounterTest.target"), &target);
    EXPECT_NE(&source, &target);
}

TEST(Counters, AssigningOneToItselfKeepsItsValue) {
    Counter& counter = newCounter();
    counter.next();
    const Counter& itself = counter;
    EXPECT_EQ(&(counter = itself), &counter);
    EXPECT_EQ(counter.next(), 1);
}

TEST(Counters, WrapFromTheLargestNumberToTheSmallest) {
    Counter& counter = newCounter();
    setTo(counter, 2147483646);
    EXPECT_EQ(counter.next(), 2147483646);
    EXPECT_EQ(counter.next(), 2147483647);
    EXPECT_EQ(counter.next(), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(counter.next(), -2147483647);
}

TEST(Counters, IncrementFromMinus1To0) {
    Counter& counter = newCounter();
    setTo(counter, -1);
    EXPECT_EQ(counter.next(), -1);
    EXPECT_EQ(counter.next(), 0);
    EXPECT_EQ(counter.next(), 1);
}

TEST(Counters, CopyAndResetAnyValue) {
    Counter& source = newCounter();
    setTo(source, -2147483647);
    Counter& target = newCounter();
    target = source;
    EXPECT_EQ(target.next(), -2147483647);
    target.reset();
    EXPECT_EQ(target.next(), 0);
    EXPECT_EQ(source.next(), -2147483647);
}

} // namespace
