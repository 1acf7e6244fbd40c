// A failed allocation leaves no handle open and no memory allocated, and the caller gets
// std::bad_alloc.

#include "OutOfMemory.h"

#include <memory>
#include <new>
#include <typeinfo>

#include "FailingDemangler.h"
#include "NodeCell.h"
#include "Operations.h"
#include "RegistryTest.h"
#include "ZOL/RegistryAccess/ErrorText.h"

using support::Lines;
using support::Operation;
using ZOL::RegistryAccess::displayName;
using ZOL::RegistryAccess::Registry;
namespace FailingAllocator = support::FailingAllocator;

namespace {

// Longer than what a string holds without an allocation.
const std::string longName = "a name that is longer than a short string";
const std::string longPath = std::string("a path\\with components that are\\").append(longName);
const std::string longMessage = "a message that is longer than a short string";
const std::string description = std::string("class ZOL::RegistryAccess::Registry::NotFound' (")
                                    .append(longName)
                                    .append(":7): ")
                                    .append(longMessage);

class OperationWithoutMemory
    : public support::RegistryTest,
      public testing::WithParamInterface<std::tuple<Operation, FailingAllocator::Mode>> {
protected:
    void resetTree() {
        for (const char* const path : {"node", "other", "a path"}) {
            platform.user().erase(path);
        }
        support::arrange(platform);
        platform.user().make("existing\\" + longPath);
        for (const char* const path : {"node\\", "other\\"}) {
            const std::string below = path + longName;
            platform.user().make(std::string(below).append("\\").append(longName).append("\\low"));
            platform.user().make(below)->setValue(longName, REG_SZ, longName);
            platform.user().make(path)->setValue(longName, REG_SZ, longName);
        }
    }
};

std::vector<Operation> withLongNames() {
    return {
        {"open",
         [](Registry&, Registry&) {
             Registry::open(HKEY_CURRENT_USER, "existing\\" + longPath);
         }},
        {"create",
         [](Registry&, Registry&) {
             Registry::create(HKEY_CURRENT_USER, longPath);
         }},
        {"hasSubKey",
         [](Registry& node, Registry&) {
             node.hasSubKey(longName);
         }},
        {"openSubKey",
         [](Registry& node, Registry&) {
             node.openSubKey(longName);
         }},
        {"createSubKey",
         [](Registry& node, Registry&) {
             node.createSubKey(longPath);
         }},
        {"deleteSubKey",
         [](Registry& node, Registry&) {
             node.deleteSubKey(longName);
         }},
        {"hasValue",
         [](Registry& node, Registry&) {
             node.hasValue(longName);
         }},
        {"getStringValue",
         [](Registry& node, Registry&) {
             node.getStringValue(longName);
         }},
        {"updateStringValue",
         [](Registry& node, Registry&) {
             node.updateStringValue(longName, support::bytes(longName));
         }},
        {"updateIntValue",
         [](Registry& node, Registry&) {
             node.updateIntValue(longName, 1);
         }},
        {"deleteValue",
         [](Registry& node, Registry&) {
             node.deleteValue(longName);
         }},
        {"getSubKeys",
         [](Registry& node, Registry&) {
             node.getSubKeys();
         }},
        {"copyValuesFrom",
         [](Registry& node, Registry& other) {
             node.copyValuesFrom(other);
         }},
        {"copyFrom",
         [](Registry& node, Registry& other) {
             node.copyFrom(other);
         }},
        {"copy",
         [](Registry& node, Registry&) {
             const Registry copy(node.openSubKey(longName));
         }},
        {"assignment",
         [](Registry& node, Registry&) {
             const Registry source = node.openSubKey(longName);
             Registry target;
             target = source;
         }},
    };
}

INSTANTIATE_TEST_SUITE_P(Of, OperationWithoutMemory,
                         testing::Combine(testing::ValuesIn(withLongNames()),
                                          testing::Values(FailingAllocator::Mode::Once,
                                                          FailingAllocator::Mode::FromThenOn)),
                         [](const auto& instance) {
                             return std::get<0>(instance.param).name +
                                    nameOf(std::get<1>(instance.param));
                         });

TEST_P(OperationWithoutMemory, ThrowsBadAllocAndLeavesNoHandleOpenAndNoMemory) {
    const auto& [operation, mode] = GetParam();
    bool failed = true;
    std::size_t n = 0;
    while (failed) {
        ++n;
        resetTree();
        Registry own = node();
        Registry other = node("other");
        failed = false;
        FailingAllocator::start(n, mode);
        try {
            operation.run(own, other);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        FailingAllocator::stop();
        EXPECT_EQ(failed, FailingAllocator::failures() > 0) << "allocation " << n << " failed";
        ASSERT_EQ(FailingAllocator::blocksLeft(), 0) << "after the failure of allocation " << n;
        ASSERT_EQ(platform.openHandles(), 2U) << "after the failure of allocation " << n;
        ASSERT_EQ(platform.takeMisuses(), Lines()) << "after the failure of allocation " << n;
    }
    EXPECT_GT(n, 1U) << "there was something to fail";
}

class WhatWithoutMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(WhatWithoutMemory);

TEST_P(WhatWithoutMemory, IsEmptyAndCompleteAtALaterCall) {
    bool failed = true;
    std::size_t n = 0;
    while (failed) {
        ++n;
        const Registry::NotFound error(longMessage.c_str(), longName.c_str(), 7);
        const char* text = nullptr;
        failed = attempt(n, [&] { text = error.what(); }).failed;
        EXPECT_EQ(text, failed ? "" : description) << "allocation " << n;
        EXPECT_EQ(error.what(), description);
    }
    EXPECT_GT(n, 3U);
}

TEST(WhatWithoutADemangledName, IsEmptyAndCompleteAtALaterCall) {
    const Registry::NotFound error(longMessage.c_str(), longName.c_str(), 7);
    support::failDemangling(true);
    EXPECT_STREQ(error.what(), "");
    support::failDemangling(false);
    EXPECT_EQ(error.what(), description);
}

TEST(DisplayNames, AreEmptyWithoutADemangledName) {
    support::failDemangling(true);
    EXPECT_EQ(displayName(typeid(Registry::NotFound)), "");
    support::failDemangling(false);
    EXPECT_EQ(displayName(typeid(Registry::NotFound)),
              "class ZOL::RegistryAccess::Registry::NotFound");
}

TEST_P(WhatWithoutMemory, AnErrorThatCannotBeMadeCopiedOrAssignedLeavesNothing) {
    const Registry::NotFound source(longMessage.c_str(), longName.c_str(), 7);
    source.what();
    const std::size_t failures = sweep(
        [&] {
            const Registry::NotFound made(longName.c_str(), longName.c_str(), 7);
            const auto copy = std::make_unique<Registry::NotFound>(source);
            Registry::NotFound target("", "", 0);
            target = source;
        },
        [&] { EXPECT_EQ(source.what(), description); });
    EXPECT_EQ(source.what(), description);
    EXPECT_EQ(failures, 12U) << "a record and two texts, an error with a record and three, then a "
                                "record and three texts assigned to it";
}

} // namespace
