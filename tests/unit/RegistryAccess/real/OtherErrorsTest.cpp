// Nodes without a key, nodes whose key is deleted, and the errors as callers catch them.

#include <exception>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "ErrorExpectation.h"
#include "RegistryFixture.h"

using support::expectError;
using support::withZero;
using ZOL::RegistryAccess::Registry;

namespace {

const std::string invalidHandle = "handle_ != 0: Invalid handle state.";
const std::string invalidHandles = "handle_ != 0 && otherNode.handle_ != 0: Invalid handle state.";

TEST(RegistryNodeWithoutAKey, IsNamedSo) {
    EXPECT_EQ(Registry().getName(), "NOT INITIALIZED!");
}

TEST(RegistryNodeWithoutAKey, SaysSoInEveryOperationOnSubKeys) {
    Registry node;
    expectError<Registry::NotInitialized>(595, invalidHandle, [&] { node.openSubKey("a"); });
    expectError<Registry::NotInitialized>(617, invalidHandle, [&] { node.createSubKey("a"); });
    expectError<Registry::NotInitialized>(431, invalidHandle, [&] { node.deleteSubKey("a"); });
    expectError<Registry::NotInitialized>(538, invalidHandle, [&] { node.getSubKeys(); });
}

TEST(RegistryNodeWithoutAKey, SaysSoInEveryOperationOnValues) {
    Registry node;
    expectError<Registry::NotInitialized>(295, invalidHandle, [&] { node.hasValue("a"); });
    expectError<Registry::NotInitialized>(314, invalidHandle, [&] { node.getStringValue("a"); });
    expectError<Registry::NotInitialized>(374, invalidHandle, [&] { node.getIntValue("a"); });
    expectError<Registry::NotInitialized>(469, invalidHandle,
                                          [&] { node.updateStringValue("a", {}); });
    expectError<Registry::NotInitialized>(509, invalidHandle, [&] { node.updateIntValue("a", 1); });
    expectError<Registry::NotInitialized>(450, invalidHandle, [&] { node.deleteValue("a"); });
}

TEST(RegistryNodeWithoutAKey, SaysSoAfterAFailureToo) {
    Registry node;
    for (int i = 0; i < 2; ++i) {
        EXPECT_THROW(node.hasValue("a"), Registry::NotInitialized);
        EXPECT_EQ(node.getName(), "NOT INITIALIZED!");
    }
}

class RegistryOtherErrors : public support::RegistryFixture {};

TEST_F(RegistryOtherErrors, CopyingWithANodeWithoutAKeyOnEitherSideSaysSo) {
    Registry empty;
    Registry node = make();
    node.updateIntValue("value", 1);
    const auto expectCheck = [](auto operation) {
        expectError<Registry::NotInitialized>(656, invalidHandles, operation);
    };
    expectCheck([&] { empty.copyValuesFrom(node); });
    expectCheck([&] { node.copyValuesFrom(empty); });
    expectCheck([&] { empty.copyValuesFrom(empty); });
    expectCheck([&] { empty.copyFrom(node); });
    expectCheck([&] { node.copyFrom(empty); });
    expectCheck([&] { empty.copyFrom(empty); });
}

TEST_F(RegistryOtherErrors, ANodeWithoutAKeyWorksOnceItIsAssignedTo) {
    Registry node;
    node = make("a");
    EXPECT_EQ(node.getName(), "a");
    node.updateIntValue("value", 1);
    EXPECT_EQ(node.getIntValue("value"), 1);
}

TEST_F(RegistryOtherErrors, AKeyThatWasDeletedMeanwhileFailsInEveryOperation) {
    Registry node = make("gone");
    Registry other = make("other");
    make().deleteSubKey("gone");

    expectError<Registry::OpenError>(350, "Unable to open requested value.",
                                     [&] { node.getStringValue("a"); });
    expectError<Registry::OpenError>(398, "Unable to open requested value.",
                                     [&] { node.getIntValue("a"); });
    expectError<Registry::OpenError>(499, "Unable to open requested value.",
                                     [&] { node.updateStringValue("a", withZero("x")); });
    expectError<Registry::OpenError>(529, "Unable to open requested value.",
                                     [&] { node.updateIntValue("a", 1); });
    expectError<Registry::NotFound>(462, "Unable to delete given value.",
                                    [&] { node.deleteValue("a"); });
    expectError<Registry::OpenError>(569, "Unable to open enumerated sub key.",
                                     [&] { node.getSubKeys(); });
    expectError<Registry::OpenError>(608, "Unable to open requested key.",
                                     [&] { node.openSubKey("a"); });
    expectError<Registry::CreationError>(630, "Unable to create requested key.",
                                         [&] { node.createSubKey("a"); });
    expectError<Registry::NotFound>(443, "Unable to delete given key.",
                                    [&] { node.deleteSubKey("a"); });
    expectError<Registry::OpenError>(569, "Unable to open enumerated sub key.",
                                     [&] { other.copyFrom(node); });
    EXPECT_FALSE(node.hasValue("a"));
    EXPECT_FALSE(node.hasSubKey("a"));
    other.copyValuesFrom(node);
    other.updateIntValue("a", 1);
    node.copyValuesFrom(other);
    EXPECT_EQ(node.getName(), "gone");
}

TEST_F(RegistryOtherErrors, TextIsBuiltOnceAndKept) {
    try {
        Registry::open(HKEY_CURRENT_USER, path("missing"));
        FAIL();
    } catch (const Registry::OpenError& error) {
        const char* const text = error.what();
        EXPECT_EQ(error.what(), text);
        EXPECT_STREQ(text, "class ZOL::RegistryAccess::Registry::OpenError' "
                           "(src\\..\\src\\ZOL\\RegistryAccess\\Registry:286): "
                           "Unable to open requested key");
    }
}

TEST_F(RegistryOtherErrors, AKeptErrorOutlivesTheCaughtOne) {
    Registry::NotFound kept("", "", 0);
    try {
        make().deleteValue("missing");
        FAIL();
    } catch (const Registry::NotFound& error) {
        kept = error;
    }
    EXPECT_STREQ(kept.message(), "Unable to delete given value.");
    EXPECT_EQ(kept.lineNumber(), 462);
    EXPECT_STREQ(kept.what(), "class ZOL::RegistryAccess::Registry::NotFound' "
                              "(src\\..\\src\\ZOL\\RegistryAccess\\Registry:462): "
                              "Unable to delete given value.");
}

TEST_F(RegistryOtherErrors, AreNoStandardExceptions) {
    EXPECT_FALSE((std::is_base_of_v<std::exception, Registry::GenericRegistryError>));
    try {
        make().deleteValue("missing");
        FAIL();
    } catch (const std::exception&) {
        FAIL() << "caught as a standard exception";
    } catch (const Registry::GenericRegistryError& error) {
        EXPECT_EQ(error.lineNumber(), 462);
    }
}

} // namespace
