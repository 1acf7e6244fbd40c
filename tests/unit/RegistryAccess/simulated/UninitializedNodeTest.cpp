#include "NodeCell.h"
#include "Operations.h"
#include "RegistryTest.h"

using support::cellOf;
using support::Lines;
using support::Operation;
using support::summaryOf;
using support::thrownBy;
using ZOL::RegistryAccess::Registry;

namespace {

class UninitializedNode : public support::RegistryTest {};

TEST_F(UninitializedNode, HasItsOwnNameAndNoCell) {
    const Registry node;
    EXPECT_EQ(node.getName(), "NOT INITIALIZED!");
    EXPECT_EQ(cellOf(node), nullptr);
}

TEST_F(UninitializedNode, IsCreatedAndDestroyedWithoutAPlatformCall) {
    {
        // Destroyed at once.
        const Registry node;
    }
    EXPECT_EQ(platform.takeCalls(), Lines());
}

TEST_F(UninitializedNode, OpensByAnAssignment) {
    const Registry source = node("source");
    Registry target;
    target = source;
    EXPECT_EQ(target.getName(), "source");
    EXPECT_EQ(cellOf(target), cellOf(source));
    EXPECT_EQ(support::referencesOf(target), 2);
}

class CheckedOperation : public support::RegistryTest,
                         public testing::WithParamInterface<Operation> {};
INSTANTIATE_TEST_SUITE_P(Of, CheckedOperation, testing::ValuesIn(support::checkedOperations()),
                         [](const auto& instance) { return instance.param.name; });

TEST_P(CheckedOperation, RefusesANodeWithoutAKeyBeforeAnyPlatformCall) {
    Registry without;
    Registry other = node("other");
    EXPECT_EQ(thrownBy([&] { GetParam().run(without, other); }).errorClass, "NotInitialized");
    EXPECT_EQ(platform.takeCalls(), Lines());
    EXPECT_EQ(without.getName(), "NOT INITIALIZED!");
}

class CopyFromNothing : public support::RegistryTest {};

TEST_F(CopyFromNothing, IsRefusedByCopyValuesFromBeforeAnyPlatformCall) {
    Registry own = node();
    const Registry without;
    EXPECT_EQ(summaryOf(thrownBy([&] { own.copyValuesFrom(without); })), "NotInitialized 656");
    EXPECT_EQ(platform.takeCalls(), Lines());
}

TEST_F(CopyFromNothing, IsRefusedByCopyFromBeforeAnyPlatformCall) {
    Registry own = node();
    const Registry without;
    EXPECT_EQ(summaryOf(thrownBy([&] { own.copyFrom(without); })), "NotInitialized 656");
    EXPECT_EQ(platform.takeCalls(), Lines());
}

TEST_F(CopyFromNothing, IsRefusedWithTheSameMessageOnEitherSide) {
    Registry own = node();
    Registry without;
    EXPECT_EQ(thrownBy([&] { own.copyFrom(without); }).message,
              "handle_ != 0 && otherNode.handle_ != 0: Invalid handle state.");
    EXPECT_EQ(thrownBy([&] { without.copyFrom(own); }).message,
              "handle_ != 0 && otherNode.handle_ != 0: Invalid handle state.");
}

} // namespace
