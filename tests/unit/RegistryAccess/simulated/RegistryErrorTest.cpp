// The errors themselves: fields, text, copies, layout.

#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "ZOL/RegistryAccess/Registry.h"

using ZOL::RegistryAccess::Registry;
using Root = Registry::GenericRegistryError;

namespace {

static_assert(sizeof(Root) == 2 * sizeof(void*), "a virtual table and one pointer");
static_assert(sizeof(Registry) == sizeof(std::string) + sizeof(void*));
static_assert(!std::is_polymorphic_v<Registry>);

template <typename Error>
class RegistryErrorClass : public testing::Test {
protected:
    static std::string name();
};
template <>
std::string RegistryErrorClass<Registry::AccessDenied>::name() {
    return "AccessDenied";
}
template <>
std::string RegistryErrorClass<Registry::OpenError>::name() {
    return "OpenError";
}
template <>
std::string RegistryErrorClass<Registry::CreationError>::name() {
    return "CreationError";
}
template <>
std::string RegistryErrorClass<Registry::NotFound>::name() {
    return "NotFound";
}
template <>
std::string RegistryErrorClass<Registry::NotInitialized>::name() {
    return "NotInitialized";
}
template <>
std::string RegistryErrorClass<Root>::name() {
    return "GenericRegistryError";
}

using AllErrors =
    testing::Types<Registry::AccessDenied, Registry::OpenError, Registry::CreationError,
                   Registry::NotFound, Registry::NotInitialized, Root>;
TYPED_TEST_SUITE(RegistryErrorClass, AllErrors, );

TYPED_TEST(RegistryErrorClass, KeepsMessageFileAndLine) {
    const TypeParam error("message", "file", -42);
    EXPECT_STREQ(error.message(), "message");
    EXPECT_STREQ(error.filename(), "file");
    EXPECT_EQ(error.lineNumber(), -42);
}

TYPED_TEST(RegistryErrorClass, IsNamedInWhatAlsoIfCaughtAsTheRoot) {
    try {
        throw TypeParam("message", "file", 42);
    } catch (const Root& error) {
        EXPECT_EQ(error.what(),
                  "class ZOL::RegistryAccess::Registry::" + this->name() + "' (file:42): message");
    }
}

TYPED_TEST(RegistryErrorClass, IsCaughtAsItself) {
    EXPECT_THROW(throw TypeParam("message", "file", 1), TypeParam);
}

TYPED_TEST(RegistryErrorClass, HasTheSizeOfTheRootAndIsNoStandardException) {
    EXPECT_EQ(sizeof(TypeParam), sizeof(Root));
    EXPECT_TRUE((std::is_base_of_v<Root, TypeParam>));
    EXPECT_FALSE((std::is_base_of_v<std::exception, TypeParam>));
}

TYPED_TEST(RegistryErrorClass, CopiesAndAssignsAllFields) {
    const auto source = std::make_unique<TypeParam>("message", "file", 42);
    const TypeParam copy(*source);
    TypeParam target("old", "old file", 1);
    target = *source;
    for (const Root* const error :
         {static_cast<const Root*>(&copy), static_cast<const Root*>(&target)}) {
        EXPECT_STREQ(error->message(), "message");
        EXPECT_STREQ(error->filename(), "file");
        EXPECT_EQ(error->lineNumber(), 42);
    }
}

TEST(RegistryError, DerivedClassesDoNotCatchOneAnother) {
    EXPECT_FALSE((std::is_base_of_v<Registry::OpenError, Registry::NotFound>));
    EXPECT_FALSE((std::is_base_of_v<Registry::NotFound, Registry::OpenError>));
    EXPECT_FALSE((std::is_base_of_v<Registry::OpenError, Registry::CreationError>));
    EXPECT_FALSE((std::is_base_of_v<Registry::OpenError, Registry::AccessDenied>));
    EXPECT_FALSE((std::is_base_of_v<Registry::OpenError, Registry::NotInitialized>));
}

TEST(RegistryError, WritesOverTheSeedOfItsText) {
    EXPECT_STREQ(Registry::NotFound("", "", 0).what(),
                 "class ZOL::RegistryAccess::Registry::NotFound' (:0): ");
}

TEST(RegistryError, BuildsItsTextOnceAndKeepsIt) {
    const Registry::NotFound error("message", "file", 1);
    const char* const first = error.what();
    EXPECT_EQ(error.what(), first);
}

TEST(RegistryError, KeepsTextsOfItsOwn) {
    std::string message = "message";
    std::string file = "file";
    const Registry::NotFound error(message.c_str(), file.c_str(), 1);
    message = "changed";
    file = "gone";
    EXPECT_STREQ(error.message(), "message");
    EXPECT_STREQ(error.filename(), "file");
}

TEST(RegistryError, CopiedAfterWhatCarriesTheTextInStorageOfItsOwn) {
    auto source = std::make_unique<Registry::NotFound>("message", "file", 1);
    const std::string text = source->what();
    const Root copy(*source); // of another class, so that a text built anew would differ
    EXPECT_NE(copy.what(), source->what());
    EXPECT_NE(copy.message(), source->message());
    source.reset();
    EXPECT_EQ(copy.what(), text);
    EXPECT_STREQ(copy.message(), "message");
    EXPECT_STREQ(copy.filename(), "file");
    EXPECT_EQ(copy.lineNumber(), 1);
}

TEST(RegistryError, CopiedBeforeWhatBuildsItsOwnText) {
    const auto source = std::make_unique<Registry::NotFound>("message", "file", 1);
    const Root copy(*source);
    EXPECT_STREQ(source->what(),
                 "class ZOL::RegistryAccess::Registry::NotFound' (file:1): message");
    EXPECT_STREQ(copy.what(),
                 "class ZOL::RegistryAccess::Registry::GenericRegistryError' (file:1): message");
}

TEST(RegistryError, AssignmentReplacesAllFourFields) {
    const Registry::NotFound source("source", "source file", 1);
    const std::string text = source.what();
    Root target("target", "target file", 2);
    target.what();
    const Root& result = target = source;
    EXPECT_EQ(&result, &target);
    EXPECT_STREQ(target.message(), "source");
    EXPECT_STREQ(target.filename(), "source file");
    EXPECT_EQ(target.lineNumber(), 1);
    EXPECT_EQ(target.what(), text);
}

TEST(RegistryError, AssignmentOfOneWithoutTextClearsTheText) {
    const Registry::NotFound source("source", "file", 1);
    Registry::NotFound target("target", "file", 2);
    target.what();
    target = source;
    EXPECT_STREQ(target.what(), "class ZOL::RegistryAccess::Registry::NotFound' (file:1): source");
}

TEST(RegistryError, AssignedToLeavesTheSourceARecordOfItsOwn) {
    Registry::NotFound target("target", "file", 2);
    {
        const Registry::NotFound source("source", "file", 1);
        target = source;
        EXPECT_NE(target.message(), source.message());
    }
    EXPECT_STREQ(target.message(), "source");
}

TEST(RegistryError, AssignedToItselfStaysAsItWas) {
    Registry::NotFound error("message", "file", 1);
    const std::string text = error.what();
    const Registry::NotFound& same = error;
    error = same;
    EXPECT_STREQ(error.message(), "message");
    EXPECT_EQ(error.what(), text);
}

TEST(RegistryError, IsNotCaughtAsAStandardException) {
    bool caught = false;
    try {
        throw Registry::NotFound("message", "file", 1);
    } catch (const std::exception&) {
        FAIL();
    } catch (const Root&) {
        caught = true;
    }
    EXPECT_TRUE(caught);
}

/// Shows which slot calls what.
class Named final : public Root {
public:
    Named() : Root("", "", 0) {}
    const char* what() const override { return "override"; }
};

TEST(RegistryError, HasWhatInTheSlotAfterTheDestructor) {
    const Named object;
    void* const* slots = nullptr;
    std::memcpy(&slots, static_cast<const void*>(&object), sizeof(slots));
    const char* (*what)(const Root*) = nullptr;
    std::memcpy(&what, slots + 2, sizeof(what)); // two slots hold the destructor
    EXPECT_STREQ(what(&object), "override");
}

TEST(RegistryError, IsDestroyedThroughTheRoot) {
    // A leak here shows under the address sanitizer.
    const std::unique_ptr<Root> error = std::make_unique<Registry::OpenError>("message", "file", 1);
    EXPECT_TRUE(std::has_virtual_destructor_v<Root>);
    EXPECT_STREQ(error->message(), "message");
}

} // namespace
