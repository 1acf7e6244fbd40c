#include "OutOfMemory.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"

using support::longText;
using ZOL::Framework::Exceptions::FrameworkException;

namespace {

class FrameworkExceptionOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(FrameworkExceptionOutOfMemory);

TEST_P(FrameworkExceptionOutOfMemory, TheDefaultConstructorLeavesNothing) {
    EXPECT_EQ(sweep([] { const FrameworkException exception; }), 1U);
}

TEST_P(FrameworkExceptionOutOfMemory, TheConstructorFromAMessageLeavesNothing) {
    EXPECT_EQ(sweep([] { const FrameworkException exception(longText); }), 2U);
}

TEST_P(FrameworkExceptionOutOfMemory, TheCopyConstructorLeavesNothingAndItsSourceAlone) {
    const FrameworkException source(longText);
    EXPECT_EQ(sweep([&] { static_cast<void>(FrameworkException(source)); },
                    [&] { EXPECT_STREQ(source.message(), longText); }),
              2U);
}

TEST_P(FrameworkExceptionOutOfMemory, ThrowingItGivesBadAllocInItsPlace) {
    EXPECT_EQ(sweep([] {
                  try {
                      throw FrameworkException(longText);
                  } catch (const FrameworkException&) {
                  }
              }),
              2U);
}

TEST_P(FrameworkExceptionOutOfMemory, AssignmentLeavesItAsItWas) {
    const FrameworkException source(longText);
    FrameworkException target("before");
    const char* const message = target.message();
    EXPECT_EQ(sweep([&] { target = source; },
                    [&] {
                        EXPECT_STREQ(target.message(), "before");
                        EXPECT_EQ(target.message(), message) << "the very text of before";
                    }),
              2U);
    EXPECT_STREQ(target.message(), longText);
}

TEST_P(FrameworkExceptionOutOfMemory, AssignmentToItselfLeavesItAsItWas) {
    FrameworkException exception(longText);
    const FrameworkException& same = exception;
    EXPECT_EQ(
        sweep([&] { exception = same; }, [&] { EXPECT_STREQ(exception.message(), longText); }), 2U);
    EXPECT_STREQ(exception.message(), longText);
}

TEST_P(FrameworkExceptionOutOfMemory, LookingAtTheMessageNeedsNone) {
    const FrameworkException exception(longText);
    EXPECT_EQ(allocationsOf([&] { exception.message(); }), 0U);
}

} // namespace
