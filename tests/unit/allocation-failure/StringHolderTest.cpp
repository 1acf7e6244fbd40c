#include "OutOfMemory.h"

#include "ZOL/Framework/StringHolder.h"

using support::longText;
using ZOL::Framework::StringHolder;

namespace {

class StringHolderOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(StringHolderOutOfMemory);

TEST_P(StringHolderOutOfMemory, TheDefaultConstructorLeavesNothing) {
    EXPECT_EQ(sweep([] { const StringHolder holder; }), 1U);
}

TEST_P(StringHolderOutOfMemory, TheConstructorFromATextLeavesNothing) {
    EXPECT_EQ(sweep([] { const StringHolder holder(longText); }), 2U);
}

TEST_P(StringHolderOutOfMemory, TheCopyConstructorLeavesNothingAndItsSourceAlone) {
    const StringHolder source(longText);
    EXPECT_EQ(sweep([&] { static_cast<void>(StringHolder(source)); },
                    [&] { EXPECT_STREQ(source.c_str(), longText); }),
              2U);
}

TEST_P(StringHolderOutOfMemory, AssignmentLeavesTheTextUnchanged) {
    const StringHolder source(longText);
    StringHolder target("before");
    EXPECT_EQ(sweep([&] { target = source; }, [&] { EXPECT_STREQ(target.c_str(), "before"); }), 1U);
    EXPECT_STREQ(target.c_str(), longText);
}

TEST_P(StringHolderOutOfMemory, AppendLeavesTheTextUnchanged) {
    const StringHolder source(longText);
    StringHolder target("before ");
    EXPECT_EQ(sweep([&] { target += source; }, [&] { EXPECT_STREQ(target.c_str(), "before "); }),
              1U);
    EXPECT_EQ(target.c_str(), std::string("before ") + longText);
}

TEST_P(StringHolderOutOfMemory, AppendToItselfLeavesTheTextUnchanged) {
    StringHolder holder(longText);
    EXPECT_EQ(sweep([&] { holder += holder; }, [&] { EXPECT_STREQ(holder.c_str(), longText); }),
              1U);
    EXPECT_EQ(holder.c_str(), std::string(longText) + longText);
}

TEST_P(StringHolderOutOfMemory, AssignmentToItselfAndLookingAtTheTextNeedNone) {
    StringHolder holder(longText);
    const StringHolder& same = holder;
    EXPECT_EQ(allocationsOf([&] { holder = same; }), 0U);
    EXPECT_EQ(allocationsOf([&] { same.c_str(); }), 0U);
    EXPECT_STREQ(holder.c_str(), longText);
}

} // namespace
