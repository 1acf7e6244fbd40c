// What services allocate and free, seen from outside. On Windows the blocks of strings are not
// visible; the blocks that contain the string objects are.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "UnloadTrace.h"
#include "WideText.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::wide;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;
using ZOL::Gadgets::DLL::DLLHolder;
namespace UnloadTrace = support::UnloadTrace;

namespace {

constexpr const char* longText = "a text that is longer than what a string holds within itself";

class HeapUse : public testing::Test {
protected:
    HeapUse() {
        UnloadTrace::attach();
        UnloadTrace::forget();
    }
    ~HeapUse() override { UnloadTrace::forget(); }

    /// The tagged blocks freed while the function ran; those it allocates have this tag.
    template <typename Function>
    static std::vector<std::string> freedBy(const char* tag, Function function) {
        UnloadTrace::start();
        UnloadTrace::tag(tag);
        function();
        UnloadTrace::tag(nullptr);
        return UnloadTrace::stop();
    }

    DLLHolder client{"ModuleClient", ""};
    PropertyManager& store = *client.resolve<PropertyManager*()>("properties")();

    // Allocated before the recording.
    const WideString name = wide(longText);
    const WideString value = wide("the value of " + std::string(longText));
    const WideString missing = wide("missing, " + std::string(longText));
};

TEST_F(HeapUse, AskingForAPropertyAllocatesNothing) {
    store.setProperty(name, value);
    const char* const tag = "asking";
    const std::vector<std::string> freed = freedBy(tag, [&] {
        EXPECT_TRUE(store.hasProperty(name));
        EXPECT_FALSE(store.hasProperty(missing));
    });
    EXPECT_EQ(UnloadTrace::alive(tag), 0U);
    EXPECT_EQ(freed, std::vector<std::string>());
}

TEST_F(HeapUse, ReadingAPropertyAllocatesNothing) {
    store.setProperty(name, value);
    const char* const tag = "reading";
    const std::vector<std::string> freed =
        freedBy(tag, [&] { EXPECT_EQ(store.readProperty(name), value); });
    EXPECT_EQ(UnloadTrace::alive(tag), 0U);
    EXPECT_EQ(freed, std::vector<std::string>());
}

TEST_F(HeapUse, SettingAPropertyAgainFreesTheOldEntryAndAllocatesANewOne) {
    const char* const first = "first";
    const char* const second = "second";
    const char* const third = "third";
    freedBy(first, [&] { store.setProperty(name, value); });
    const std::size_t blocks = UnloadTrace::alive(first);
    // The entry, and name and value where they are visible.
    ASSERT_EQ(blocks, UnloadTrace::seesStrings ? 3U : 1U);

    // The same value or another one.
    EXPECT_EQ(freedBy(second, [&] { store.setProperty(name, value); }).size(), blocks);
    EXPECT_EQ(UnloadTrace::alive(first), 0U);
    EXPECT_EQ(UnloadTrace::alive(second), blocks);

    EXPECT_EQ(freedBy(third, [&] { store.setProperty(name, missing); }).size(), blocks);
    EXPECT_EQ(UnloadTrace::alive(second), 0U);
    EXPECT_EQ(UnloadTrace::alive(third), blocks);
}

TEST_F(HeapUse, ClearingAPropertyFreesItsEntry) {
    const char* const tag = "cleared";
    freedBy(tag, [&] { store.setProperty(name, value); });
    ASSERT_NE(UnloadTrace::alive(tag), 0U);
    freedBy("nothing", [&] { store.clearProperty(name); });
    EXPECT_EQ(UnloadTrace::alive(tag), 0U);
}

TEST_F(HeapUse, ReportingAMissingPropertyLeaksNothing) {
    const auto failsToRead = client.resolve<bool(const WideString*)>("failsToRead");
    const char* const tag = "exception";
    const std::vector<std::string> freed =
        freedBy(tag, [&] { EXPECT_TRUE(failsToRead(&missing)); });
    EXPECT_NE(freed.size(), 0U) << "a message of its own in each exception";
    EXPECT_EQ(UnloadTrace::alive(tag), 0U);
}

TEST_F(HeapUse, TextsInHoldersAreAllFreed) {
    const auto join = client.resolve<bool(const char*, const char*, const char*)>("join");
    const char* const tag = "holders";
    const std::vector<std::string> freed = freedBy(tag, [&] {
        EXPECT_TRUE(join("short", longText,
                         "shorta text that is longer than what a string holds within itself"));
    });
    EXPECT_GE(freed.size(), 3U) << "one string in each holder at least";
    EXPECT_EQ(UnloadTrace::alive(tag), 0U);
}

} // namespace
