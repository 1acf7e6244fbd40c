#include <stdexcept>

#include "OutOfMemory.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::longText;
using ZOL::Gadgets::DLL::AssertionStream;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

/// The whole text that the assertion raises.
std::string raised(const AssertionStream& assertion) {
    try {
        assertion.raise();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing was raised";
}

class DLLHolderOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(DLLHolderOutOfMemory);

TEST_P(DLLHolderOutOfMemory, AFileNameThatCannotBeBuiltLeavesNothing) {
    EXPECT_GE(sweep([] { DLLHolder::dllFileName(longText, "1.2.3"); }), 1U);
}

TEST_P(DLLHolderOutOfMemory, TheConstructorLeavesNothing) {
    EXPECT_GE(sweep([] { const DLLHolder holder(longText, "1.2.3"); }), 1U);
}

TEST_P(DLLHolderOutOfMemory, ResolvingWhatIsMissingGivesBadAllocInPlaceOfItsError) {
    const DLLHolder holder("no such library", "");
    std::string message(500, '\0'); // large enough, allocated before the failure
    EXPECT_GE(sweep([&] {
                  try {
                      holder.resolve<void()>("aFunctionWithALongName");
                  } catch (const std::runtime_error& error) {
                      message.assign(error.what());
                  }
              }),
              4U);
    EXPECT_EQ(message.substr(0, message.find(' ', message.find('\n'))),
              "Unable to resolve function aFunctionWithALongName from dynamic library\n"
              "Expression");
}

TEST_P(DLLHolderOutOfMemory, ResolvingWhatIsThereNeedsNone) {
    const DLLHolder holder("AllocatingBackend", "");
    EXPECT_EQ(allocationsOf([&] { holder.resolve<void()>("createBackend"); }), 0U);
}

TEST_P(DLLHolderOutOfMemory, AFailedDetailIsOmittedCompletely) {
    const bool condition = false;
    AssertionStream assertion(&condition, "failure");
    const std::string veryLong(2000, 'x');
    assertion << "before, ";
    // The storage of the details remains allocated.
    EXPECT_GE(sweep([&] { assertion << veryLong; },
                    [&] { EXPECT_EQ(raised(assertion), "before, \nfailure"); }, anyNumber),
              2U);
    EXPECT_EQ(raised(assertion), "before, " + veryLong + "\nfailure");
}

TEST_P(DLLHolderOutOfMemory, RaisingGivesBadAllocInPlaceOfTheFailureAndLaterTheFailure) {
    const bool condition = false;
    AssertionStream assertion(&condition, longText);
    assertion << "details";
    std::string message(500, '\0');
    EXPECT_GE(sweep([&] {
                  try {
                      assertion.raise();
                  } catch (const std::runtime_error& error) {
                      message.assign(error.what());
                  }
              }),
              2U);
    EXPECT_EQ(message, std::string("details\n") + longText);
}

TEST_P(DLLHolderOutOfMemory, AnAssertionThatHoldsNeedsNone) {
    const bool condition = true;
    EXPECT_EQ(allocationsOf([&] {
                  AssertionStream assertion(&condition, longText);
                  assertion << longText << 5;
                  assertion.raise();
              }),
              0U);
}

} // namespace
