// How nodes share a key, and when it closes.

#include <memory>
#include <vector>

#include "NodeCell.h"
#include "RegistryTest.h"

using support::cellOf;
using support::Lines;
using support::referencesIn;
using support::referencesOf;
using ZOL::RegistryAccess::Registry;

namespace {

class HandleHolder : public support::RegistryTest {};

TEST_F(HandleHolder, StartsWithOneReferenceAndTheKeyThatWasOpened) {
    const Registry made = node();
    EXPECT_EQ(referencesOf(made), 1);
    EXPECT_EQ(platform.handles.show(support::keyOf(made)), "k1");
}

TEST_F(HandleHolder, IsSharedByCopiesAndCountsThem) {
    const Registry made = node("made");
    {
        const auto copy = std::make_unique<Registry>(made);
        EXPECT_EQ(cellOf(*copy), cellOf(made));
        EXPECT_EQ(copy->getName(), "made");
        EXPECT_EQ(referencesOf(made), 2);
        const auto copyOfCopy = std::make_unique<Registry>(*copy);
        EXPECT_EQ(referencesOf(made), 3);
    }
    EXPECT_EQ(referencesOf(made), 1);
    EXPECT_EQ(platform.takeCalls(), Lines());
}

TEST_F(HandleHolder, ClosesTheKeyOnceWhenTheLastCopyIsDestroyed) {
    auto first = std::make_unique<Registry>(node());
    auto second = std::make_unique<Registry>(*first);
    first.reset();
    EXPECT_EQ(platform.takeCalls(), Lines());
    EXPECT_NO_THROW(second->createSubKey("usable"));
    platform.takeCalls();
    second.reset();
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k1)"}));
}

TEST_F(HandleHolder, ClosesTheKeyOnceWhenTheFirstOneOutlivesTheCopy) {
    auto first = std::make_unique<Registry>(node());
    auto second = std::make_unique<Registry>(*first);
    second.reset();
    EXPECT_EQ(platform.takeCalls(), Lines());
    first.reset();
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k1)"}));
}

TEST_F(HandleHolder, IgnoresWhatTheCloseAnswers) {
    {
        const Registry made = node();
        platform.answerAll("RegCloseKey", ERROR_ACCESS_DENIED);
    }
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k1)"}));
}

TEST_F(HandleHolder, CountsThroughTheGrowthOfAVector) {
    const Registry made = node();
    {
        std::vector<Registry> nodes;
        for (int i = 1; i <= 100; ++i) {
            nodes.push_back(made);
            EXPECT_EQ(referencesOf(made), 1 + i);
        }
        nodes.resize(10, made);
        EXPECT_EQ(referencesOf(made), 11);
    }
    EXPECT_EQ(referencesOf(made), 1);
    EXPECT_EQ(platform.takeCalls(), Lines());
}

TEST_F(HandleHolder, CountsAssignmentsOntoNodesWithoutAKey) {
    const Registry made = node();
    std::vector<Registry> nodes(5);
    for (Registry& each : nodes) {
        each = made;
    }
    EXPECT_EQ(referencesOf(made), 6);
    nodes.clear();
    EXPECT_EQ(referencesOf(made), 1);
}

TEST_F(HandleHolder, LeaksTheOldKeyIfANodeIsAssignedAnother) {
    void* oldCell = nullptr;
    {
        Registry target = node("old");
        oldCell = cellOf(target);
        const Registry source = node("new");
        const Registry& result = target = source;
        EXPECT_EQ(&result, &target);
        EXPECT_EQ(target.getName(), "new");
        EXPECT_EQ(cellOf(target), cellOf(source));
        EXPECT_EQ(referencesOf(source), 2);
        EXPECT_EQ(referencesIn(oldCell), 1);
    }
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k2)"}));
    EXPECT_EQ(platform.openHandles(), 1U);
    support::releaseReference(oldCell);
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k1)"}));
}

TEST_F(HandleHolder, LeaksAReferenceIfANodeIsAssignedToItself) {
    void* cell = nullptr;
    {
        Registry made = node("made");
        const Registry& same = made;
        cell = cellOf(made);
        made = same;
        EXPECT_EQ(made.getName(), "made");
        EXPECT_EQ(cellOf(made), cell);
        EXPECT_EQ(referencesIn(cell), 2);
    }
    EXPECT_EQ(platform.takeCalls(), Lines());
    EXPECT_EQ(platform.openHandles(), 1U);
    support::releaseReference(cell);
    EXPECT_EQ(platform.openHandles(), 0U);
}

TEST_F(HandleHolder, LeaksAReferenceIfANodeIsAssignedACopyOfItself) {
    void* cell = nullptr;
    {
        Registry made = node();
        const Registry copy(made);
        cell = cellOf(made);
        made = copy;
        EXPECT_EQ(referencesIn(cell), 3);
    }
    EXPECT_EQ(platform.openHandles(), 1U);
    support::releaseReference(cell);
}

TEST_F(HandleHolder, IsNotSharedByTwoNodesOfOneKeyWhichCloseInTheOrderOfTheirEnds) {
    {
        const Registry first = node();
        const Registry second = node();
    }
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k2)", "RegCloseKey(k1)"}));
}

} // namespace
