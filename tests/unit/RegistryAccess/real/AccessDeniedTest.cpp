// Each operation on a key without access rights, on the real registry: the owner or the access list
// of the key is changed.

#include <gtest/gtest.h>

#include "ErrorExpectation.h"
#include "RegistryFixture.h"

using support::expectError;
using support::Refusal;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryAccessDenied : public support::RegistryFixture {
protected:
    RegistryAccessDenied() {
        Registry node = make("refused");
        node.updateStringValue("text", support::withZero("x"));
        node.updateIntValue("number", 1);
    }

    /// Opened while the key refuses, so that its rights are what the key gives.
    Registry refused() const { return Registry::open(HKEY_CURRENT_USER, path("refused")); }
};

TEST_F(RegistryAccessDenied, ToOpen) {
    const Refusal refusal(path("refused"), Refusal::opening);
    expectError<Registry::AccessDenied>(281, "Unable to open requested key", [this] { refused(); });
}

TEST_F(RegistryAccessDenied, ToCreate) {
    const Refusal refusal(path("refused"), Refusal::opening);
    expectError<Registry::AccessDenied>(417, "Not enough permissions to create key.", [this] {
        Registry::create(HKEY_CURRENT_USER, path("refused"));
    });
}

TEST_F(RegistryAccessDenied, ToOpenASubKey) {
    const Refusal refusal(path("refused"), Refusal::opening);
    const Registry node = make();
    expectError<Registry::AccessDenied>(603, "Not enough permissions to read requested key.",
                                        [&] { node.openSubKey("refused"); });
}

TEST_F(RegistryAccessDenied, ToCreateASubKey) {
    const Refusal refusal(path("refused"), Refusal::opening);
    Registry node = make();
    expectError<Registry::AccessDenied>(625, "Not enough permissions to create requested key.",
                                        [&] { node.createSubKey("refused"); });
}

TEST_F(RegistryAccessDenied, ToDeleteASubKey) {
    const Refusal refusal(path("refused"), Refusal::opening);
    Registry node = make();
    expectError<Registry::AccessDenied>(438, "Not enough permissions to delete sub key.",
                                        [&] { node.deleteSubKey("refused"); });
}

TEST_F(RegistryAccessDenied, ToAskForASubKeyIsJustFalse) {
    const Refusal refusal(path("refused"), Refusal::opening);
    EXPECT_FALSE(make().hasSubKey("refused"));
}

TEST_F(RegistryAccessDenied, ToOneSubKeyEndsTheWholeListing) {
    make("a");
    make("z");
    const Refusal refusal(path("refused"), Refusal::opening);
    const Registry node = make();
    expectError<Registry::AccessDenied>(603, "Not enough permissions to read requested key.",
                                        [&] { node.getSubKeys(); });
}

TEST_F(RegistryAccessDenied, ToListSubKeys) {
    const Refusal refusal(path("refused"), Refusal::content);
    const Registry node = refused();
    expectError<Registry::AccessDenied>(561, "Not enough permissions to read sub key enumeration.",
                                        [&] { node.getSubKeys(); });
}

TEST_F(RegistryAccessDenied, ToAskForAValueIsJustFalse) {
    const Refusal refusal(path("refused"), Refusal::content);
    EXPECT_FALSE(refused().hasValue("text"));
}

TEST_F(RegistryAccessDenied, ToReadText) {
    const Refusal refusal(path("refused"), Refusal::content);
    const Registry node = refused();
    expectError<Registry::AccessDenied>(342, "Not enough permissions to read value.",
                                        [&] { node.getStringValue("text"); });
}

TEST_F(RegistryAccessDenied, ToReadANumber) {
    const Refusal refusal(path("refused"), Refusal::content);
    const Registry node = refused();
    expectError<Registry::AccessDenied>(390, "Not enough permissions to read value.",
                                        [&] { node.getIntValue("number"); });
}

TEST_F(RegistryAccessDenied, ToWriteText) {
    const Refusal refusal(path("refused"), Refusal::changes);
    Registry node = refused();
    expectError<Registry::AccessDenied>(491, "Not enough permissions to modify value.", [&] {
        node.updateStringValue("text", support::withZero("y"));
    });
    EXPECT_EQ(node.getStringValue("text"), support::bytes("x"));
}

TEST_F(RegistryAccessDenied, ToWriteANumber) {
    const Refusal refusal(path("refused"), Refusal::changes);
    Registry node = refused();
    expectError<Registry::AccessDenied>(521, "Not enough permissions to modify value.",
                                        [&] { node.updateIntValue("number", 2); });
    EXPECT_EQ(node.getIntValue("number"), 1);
}

TEST_F(RegistryAccessDenied, ToDeleteAValue) {
    const Refusal refusal(path("refused"), Refusal::changes);
    Registry node = refused();
    expectError<Registry::AccessDenied>(457, "Not enough permissions to delete value.",
                                        [&] { node.deleteValue("text"); });
    EXPECT_TRUE(node.hasValue("text"));
}

TEST_F(RegistryAccessDenied, ToReadASourceLeavesACopyOfValuesEmptyWithoutAWord) {
    const Refusal refusal(path("refused"), Refusal::content);
    Registry copy = make("copy");
    copy.copyValuesFrom(refused());
    EXPECT_FALSE(copy.hasValue("text"));
    EXPECT_FALSE(copy.hasValue("number"));
}

TEST_F(RegistryAccessDenied, ToReadASourceEndsTheCopyOfATreeAtItsListing) {
    const Refusal refusal(path("refused"), Refusal::content);
    Registry copy = make("copy");
    const Registry source = refused();
    expectError<Registry::AccessDenied>(561, "Not enough permissions to read sub key enumeration.",
                                        [&] { copy.copyFrom(source); });
}

} // namespace
