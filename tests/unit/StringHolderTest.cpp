#include "ZOL/Framework/StringHolder.h"

#include <cstring>
#include <memory>
#include <string>
#include <thread>
#include <type_traits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using ZOL::Framework::StringHolder;

namespace {

static_assert(sizeof(StringHolder) == sizeof(void*), "one pointer and nothing else");
static_assert(std::is_standard_layout_v<StringHolder> && !std::is_polymorphic_v<StringHolder>);
static_assert(std::is_convertible_v<const char*, StringHolder>);

using Assigned = decltype(std::declval<StringHolder&>() = std::declval<const StringHolder&>());
using Appended = decltype(std::declval<StringHolder&>() += std::declval<const StringHolder&>());
static_assert(std::is_same_v<Assigned, const StringHolder&>, "not to be assigned to");
static_assert(std::is_same_v<Appended, const StringHolder&>, "not to be appended to");
static_assert(std::is_same_v<decltype(std::declval<const StringHolder&>().c_str()), const char*>);

// Longer than the small-string buffer.
constexpr const char* longText = "a text that is longer than what a string holds within itself";

/// The holder's string object.
const void* heldString(const StringHolder& holder) {
    const void* string = nullptr;
    std::memcpy(&string, static_cast<const void*>(&holder), sizeof(string));
    return string;
}

TEST(StringHolders, ByDefaultHoldAnEmptyTextAndNotNull) {
    const StringHolder holder;
    ASSERT_NE(holder.c_str(), nullptr);
    EXPECT_STREQ(holder.c_str(), "");
}

TEST(StringHolders, FromAnEmptyTextAndByDefaultHoldTheSame) {
    const StringHolder nothing;
    const StringHolder empty("");
    ASSERT_NE(empty.c_str(), nullptr);
    EXPECT_STREQ(empty.c_str(), nothing.c_str());
}

TEST(StringHolders, HoldACopyOfTheCallersText) {
    char text[] = "short";
    std::string other = longText;
    const StringHolder holder(text);
    const StringHolder longHolder(other.c_str());
    EXPECT_NE(holder.c_str(), text);
    text[0] = 'X';
    other[0] = 'X';
    EXPECT_STREQ(holder.c_str(), "short");
    EXPECT_STREQ(longHolder.c_str(), longText);
}

TEST(StringHolders, TakeTextUpToItsFirstZero) {
    const char text[] = {'a', 'b', '\0', 'c', '\0'};
    StringHolder holder(text);
    EXPECT_STREQ(holder.c_str(), "ab");
    holder += "d";
    EXPECT_STREQ(holder.c_str(), "abd") << "nothing follows the zero";
}

TEST(StringHolders, TakeEveryByteAsItIs) {
    std::string bytes;
    for (int byte = 1; byte <= 0xFF; ++byte) {
        bytes += static_cast<char>(byte);
    }
    StringHolder holder(bytes.c_str());
    EXPECT_EQ(holder.c_str(), bytes);
    holder += holder;
    EXPECT_EQ(holder.c_str(), bytes + bytes);
}

TEST(StringHolders, ACopyIsNotAffectedByLaterChangesOfItsSource) {
    for (const char* const text : {"short", longText}) {
        StringHolder source(text);
        const StringHolder copy(source);
        EXPECT_NE(copy.c_str(), source.c_str());
        source += " and more";
        EXPECT_STREQ(copy.c_str(), text);
        source = "another";
        EXPECT_STREQ(copy.c_str(), text);
    }
}

TEST(StringHolders, ACopyOutlivesItsSource) {
    auto source = std::make_unique<StringHolder>(longText);
    const StringHolder copy(*source);
    source.reset();
    EXPECT_STREQ(copy.c_str(), longText);
}

TEST(StringHolders, NeverShareAString) {
    const StringHolder source(longText);
    const auto copy = std::make_unique<StringHolder>(source);
    StringHolder assigned;
    assigned = source;
    EXPECT_NE(heldString(*copy), heldString(source));
    EXPECT_NE(heldString(assigned), heldString(source));
    EXPECT_NE(heldString(assigned), heldString(*copy));
}

TEST(StringHolders, AreNeverEmptiedByAMove) {
    StringHolder source(longText);
    const StringHolder made(static_cast<StringHolder&&>(source));
    EXPECT_STREQ(source.c_str(), longText);
    StringHolder assigned;
    assigned = static_cast<StringHolder&&>(source);
    EXPECT_STREQ(source.c_str(), longText);
    EXPECT_STREQ(made.c_str(), longText);
    EXPECT_STREQ(assigned.c_str(), longText);
}

TEST(StringHolders, AssignmentReplacesTheTextAndLeavesTheOther) {
    StringHolder holder("before");
    const StringHolder other(longText);
    EXPECT_EQ(&(holder = other), &holder);
    EXPECT_STREQ(holder.c_str(), longText);
    EXPECT_STREQ(other.c_str(), longText);

    const StringHolder empty;
    holder = empty;
    EXPECT_STREQ(holder.c_str(), "");
}

TEST(StringHolders, AfterAnAssignmentBothChangeOnTheirOwn) {
    StringHolder holder;
    StringHolder other(longText);
    holder = other;
    other += "!";
    EXPECT_STREQ(holder.c_str(), longText);
    holder = "mine";
    EXPECT_EQ(other.c_str(), std::string(longText) + "!");
}

TEST(StringHolders, AssigningOneToItselfLeavesItsText) {
    for (const char* const text : {"", "short", longText}) {
        StringHolder holder(text);
        const StringHolder& itself = holder;
        EXPECT_EQ(&(holder = itself), &holder);
        EXPECT_STREQ(holder.c_str(), text);
    }
}

TEST(StringHolders, AppendingPutsTheOtherTextAfterItsOwn) {
    StringHolder holder("ab");
    const StringHolder other("cd");
    EXPECT_EQ(&(holder += other), &holder);
    EXPECT_STREQ(holder.c_str(), "abcd");
    EXPECT_STREQ(other.c_str(), "cd");
    holder += longText;
    EXPECT_EQ(holder.c_str(), std::string("abcd") + longText);
}

TEST(StringHolders, AppendingOneToItselfDoublesItsText) {
    for (const std::string text : {"ab", longText}) {
        StringHolder holder(text.c_str());
        const StringHolder& itself = holder;
        EXPECT_EQ(&(holder += itself), &holder);
        EXPECT_EQ(holder.c_str(), text + text);
    }
}

TEST(StringHolders, AppendingAnEmptyTextChangesNothing) {
    for (const char* const text : {"", "short", longText}) {
        StringHolder holder(text);
        holder += StringHolder();
        holder += "";
        EXPECT_STREQ(holder.c_str(), text);
    }
}

TEST(StringHolders, KeepTheirStringObjectWhileTheTextChanges) {
    StringHolder holder("short");
    const void* const string = heldString(holder);
    ASSERT_NE(string, nullptr);
    holder = longText;
    EXPECT_EQ(heldString(holder), string);
    holder += longText;
    EXPECT_EQ(heldString(holder), string);
    const StringHolder& itself = holder;
    holder = itself;
    EXPECT_EQ(heldString(holder), string);
    holder = StringHolder();
    EXPECT_EQ(heldString(holder), string);
}

TEST(StringHolders, TheTextStaysAtItsAddressUntilTheObjectChanges) {
    const StringHolder holder(longText);
    const char* const text = holder.c_str();
    StringHolder other(holder);
    other += holder;
    other = holder;
    other += holder;
    EXPECT_EQ(holder.c_str(), text);
    EXPECT_STREQ(text, longText);
}

TEST(StringHolders, GrowByAppendingToAnyLength) {
    StringHolder holder;
    std::string expected;
    for (int i = 0; i < 1000; ++i) {
        const std::string piece = std::to_string(i) + ",";
        holder += piece.c_str();
        expected += piece;
    }
    EXPECT_EQ(holder.c_str(), expected);
}

TEST(StringHolders, MayBeUsedOnAnyThreadEachItsOwnAndReadByAll) {
    const StringHolder shared(longText);
    std::vector<std::string> results(4);
    std::vector<std::thread> threads;
    threads.reserve(results.size());
    for (std::string& result : results) {
        threads.emplace_back([&shared, &result] {
            StringHolder own;
            for (int i = 0; i < 100; ++i) {
                own = shared;
                own += shared;
            }
            result = own.c_str();
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(results, std::vector<std::string>(4, std::string(longText) + longText));
}

} // namespace
