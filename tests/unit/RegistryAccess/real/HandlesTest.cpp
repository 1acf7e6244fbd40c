// Nodes close the handles that they open. The system counts them.

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "OpenHandles.h"
#include "RegistryFixture.h"

using support::openHandles;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryHandles : public support::RegistryFixture {
protected:
    RegistryHandles() {
        make(); // so that the root is open, which the platform keeps
        support::warmUpExceptions();
    }

    static long openedBy(const std::function<void()>& body) {
        const auto before = static_cast<long>(openHandles());
        body();
        return static_cast<long>(openHandles()) - before;
    }
};

TEST_F(RegistryHandles, EachOpeningTakesOneAndEachEndGivesItBack) {
    make("a");
    const std::size_t before = openHandles();
    {
        const Registry first = Registry::open(HKEY_CURRENT_USER, path());
        EXPECT_EQ(openHandles(), before + 1);
        const Registry second = Registry::open(HKEY_CURRENT_USER, path());
        EXPECT_EQ(openHandles(), before + 2) << "two openings of one key, two handles";
        Registry third = Registry::create(HKEY_CURRENT_USER, path());
        EXPECT_EQ(openHandles(), before + 3);
        const Registry fourth = third.openSubKey("a");
        EXPECT_EQ(openHandles(), before + 4);
        const Registry fifth = third.createSubKey("a");
        EXPECT_EQ(openHandles(), before + 5);
    }
    EXPECT_EQ(openHandles(), before);
}

TEST_F(RegistryHandles, CopiesShareOneAndTheLastGivesItBack) {
    const std::size_t before = openHandles();
    {
        Registry last;
        {
            const std::vector<Registry> copies(3, make());
            last = copies.front();
            EXPECT_EQ(openHandles(), before + 1);
        }
        EXPECT_EQ(openHandles(), before + 1);
    }
    EXPECT_EQ(openHandles(), before);
}

TEST_F(RegistryHandles, AssignmentKeepsTheOldOneOpen) {
    EXPECT_EQ(openedBy([this] {
                  Registry node = make("old");
                  node = make("new");
              }),
              1);
}

TEST_F(RegistryHandles, AssignmentToItselfKeepsItOpen) {
    EXPECT_EQ(openedBy([this] {
                  Registry node = make();
                  const Registry& same = node;
                  node = same;
              }),
              1);
}

TEST_F(RegistryHandles, ANodeWithoutAKeyHasNone) {
    EXPECT_EQ(openedBy([] { const Registry node; }), 0);
}

TEST_F(RegistryHandles, HasSubKeyGivesBackWhatItOpens) {
    make("a");
    const Registry node = make();
    EXPECT_EQ(openedBy([&] {
                  EXPECT_TRUE(node.hasSubKey("a"));
                  EXPECT_FALSE(node.hasSubKey("missing"));
              }),
              0);
}

TEST_F(RegistryHandles, OperationsOnValuesTakeNone) {
    Registry node = make();
    EXPECT_EQ(openedBy([&] {
                  node.updateIntValue("number", 1);
                  node.updateStringValue("text", support::withZero("x"));
                  node.getIntValue("number");
                  node.getStringValue("text");
                  node.hasValue("text");
                  node.deleteValue("text");
              }),
              0);
}

TEST_F(RegistryHandles, FailuresTakeNone) {
    Registry node = make();
    EXPECT_EQ(openedBy([&] {
                  EXPECT_THROW(Registry::open(HKEY_CURRENT_USER, path("missing")),
                               Registry::OpenError);
                  EXPECT_THROW(Registry::create(HKEY_CURRENT_USER, path(std::string(300, 'n'))),
                               Registry::CreationError);
                  EXPECT_THROW(node.openSubKey("missing"), Registry::OpenError);
                  EXPECT_THROW(node.createSubKey(std::string(300, 'n')), Registry::CreationError);
                  EXPECT_THROW(node.deleteSubKey("missing"), Registry::NotFound);
              }),
              0);
}

TEST_F(RegistryHandles, DeletingATreeTakesNone) {
    make("a\\b\\c");
    make("a\\d");
    Registry node = make();
    EXPECT_EQ(openedBy([&] { node.deleteSubKey("a"); }), 0);
}

TEST_F(RegistryHandles, AListingHoldsOneForEachSubKeyUntilItsLastCopyGoes) {
    for (int i = 0; i < 10; ++i) {
        make("sub key " + std::to_string(i));
    }
    const Registry node = make();
    const std::size_t before = openHandles();
    {
        Registry kept;
        {
            const std::vector<Registry> listing = node.getSubKeys();
            ASSERT_EQ(listing.size(), 10U);
            EXPECT_EQ(openHandles(), before + 10);
            std::vector<Registry> copy(listing);
            copy.pop_back();
            EXPECT_EQ(openHandles(), before + 10);
            kept = copy[4];
        }
        EXPECT_EQ(openHandles(), before + 1);
    }
    EXPECT_EQ(openHandles(), before);
}

TEST_F(RegistryHandles, AListingThatFailsGivesBackWhatItHasOpened) {
    make("a");
    make("b");
    make("c");
    const support::Refusal refusal(path("c"), support::Refusal::opening);
    const Registry node = make();
    EXPECT_EQ(openedBy([&] { EXPECT_THROW(node.getSubKeys(), Registry::AccessDenied); }), 0);
}

TEST_F(RegistryHandles, CopyingATreeTakesNone) {
    make("from\\a\\b\\c").updateIntValue("value", 1);
    make("from\\d");
    const Registry from = make("from");
    Registry to = make("to");
    EXPECT_EQ(openedBy([&] { to.copyFrom(from); }), 0);
    EXPECT_TRUE(to.hasSubKey("a\\b\\c"));
}

TEST_F(RegistryHandles, CopyingThatFailsDeepInTheTreeTakesNone) {
    make("from\\a\\b\\c\\refused");
    const support::Refusal refusal(path("from\\a\\b\\c\\refused"), support::Refusal::opening);
    const Registry from = make("from");
    Registry to = make("to");
    EXPECT_EQ(openedBy([&] { EXPECT_THROW(to.copyFrom(from), Registry::AccessDenied); }), 0);
}

} // namespace
