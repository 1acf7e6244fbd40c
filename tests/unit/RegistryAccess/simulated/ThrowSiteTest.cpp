#include "ZOL/RegistryAccess/ThrowSite.h"

#include <gtest/gtest.h>

#include "RegistryTest.h"

using support::Thrown;
using support::thrownBy;
using ZOL::RegistryAccess::checkHandle;
using ZOL::RegistryAccess::raiseCheckFailure;
using ZOL::RegistryAccess::Registry;

namespace {

TEST(RaiseCheckFailure, ThrowsNotInitializedWithExpressionAndMessage) {
    const Thrown thrown = thrownBy(
        [] { raiseCheckFailure<Registry::NotInitialized>("expression", "message", "file", 7); });
    EXPECT_EQ(thrown.errorClass, "NotInitialized");
    EXPECT_EQ(thrown.message, "expression: message");
    EXPECT_EQ(thrown.file, "file");
    EXPECT_EQ(thrown.line, 7);
}

TEST(RaiseCheckFailure, ThrowsOpenErrorWithExpressionAndMessage) {
    const Thrown thrown =
        thrownBy([] { raiseCheckFailure<Registry::OpenError>("", "", "other file", -7); });
    EXPECT_EQ(thrown.errorClass, "OpenError");
    EXPECT_EQ(thrown.message, ": ");
    EXPECT_EQ(thrown.file, "other file");
    EXPECT_EQ(thrown.line, -7);
}

TEST(CheckHandle, ThrowsForNoHandleAlone) {
    const int handle = 0;
    EXPECT_NO_THROW(checkHandle(&handle, 7));
    const Thrown thrown = thrownBy([] { checkHandle(nullptr, 7); });
    EXPECT_EQ(thrown.what, "class ZOL::RegistryAccess::Registry::NotInitialized' "
                           "(src\\..\\src\\ZOL\\RegistryAccess\\Registry:7): "
                           "handle_ != 0: Invalid handle state.");
}

} // namespace
