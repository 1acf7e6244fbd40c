#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include <ostream>
#include <stdexcept>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "LoadedModule.h"

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Gadgets::DLL;
using support::isLoaded;
using ZOL::Framework::GenericLogger::LoggerBackend;

namespace {

#if defined(_WIN32)
constexpr const char* extension = ".dll";
#else
constexpr const char* extension = ".so";
#endif

std::string report(const std::string& symbol) {
    return "Unable to resolve function " + symbol +
           " from dynamic library\n"
           "Expression 'p != 0' failed in "
           "'D:\\Repository_x64\\ZOL_Gadgets\\include\\ZOL/Gadgets/DLL/DLLHolder', line: 25";
}

std::string failure(const DLLHolder& holder, const char* symbol) {
    try {
        holder.resolve<void()>(symbol);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "no std::runtime_error";
}

static_assert(sizeof(DLLHolder) == sizeof(void*));
static_assert(!std::is_copy_constructible_v<DLLHolder>, "a copy would give one load back twice");
static_assert(!std::is_copy_assignable_v<DLLHolder>);
static_assert(!std::is_convertible_v<const char*, DLLHolder>, "a load is never implicit");
static_assert(
    std::is_same_v<decltype(std::declval<DLLHolder&>().resolve<LoggerBackend*()>("createBackend")),
                   LoggerBackend* (*)()>);

TEST(DLLHolders, TheEmptyVersionAddsNoDot) {
    EXPECT_EQ(DLLHolder::dllFileName("Foo", ""), std::string("Foo_r") + extension);
}

TEST(DLLHolders, AVersionAddsExactlyOneDot) {
    EXPECT_EQ(DLLHolder::dllFileName("Foo", "1.2"), std::string("Foo_r.1.2") + extension);
}

TEST(DLLHolders, TheFrameworksOwnNameHasThisShape) {
    EXPECT_EQ(DLLHolder::dllFileName("ZOL_Framework", "2.0.8.129"),
              std::string("ZOL_Framework_r.2.0.8.129") + extension);
}

TEST(DLLHolders, ResolveAFunctionOfALoadedLibrary) {
    const DLLHolder holder("NullBackend", "");
    LoggerBackend* (*const createBackend)() = holder.resolve<LoggerBackend*()>("createBackend");
    ASSERT_NE(createBackend, nullptr);
    EXPECT_EQ(createBackend(), nullptr);
}

TEST(DLLHolders, LoadALibraryWithAVersion) {
    const DLLHolder holder("Versioned", "1.2");
    EXPECT_EQ(holder.resolve<int()>("seven")(), 7);
}

TEST(DLLHolders, LoadACompleteFileNameWithoutComposing) {
    const DLLHolder holder((std::string("Versioned_r.1.2") + extension).c_str());
    EXPECT_EQ(holder.resolve<int()>("seven")(), 7);
    const DLLHolder uncomposed("Versioned");
    EXPECT_EQ(failure(uncomposed, "seven"), report("seven"));
}

TEST(DLLHolders, AMissingLibraryIsReportedAtTheFirstResolve) {
    const DLLHolder holder("There_is_no_such_library", "");
    EXPECT_EQ(failure(holder, "createBackend"), report("createBackend"));
}

TEST(DLLHolders, AMissingLibraryResolvesNothingOfTheRestOfTheProcess) {
    const DLLHolder good("Good", "");
    good.resolve<LoggerBackend*()>("createBackend");
    const DLLHolder missing("There_is_no_such_library", "");
    // malloc is in every process, createBackend is loaded just above.
    EXPECT_EQ(failure(missing, "malloc"), report("malloc"));
    EXPECT_EQ(failure(missing, "createBackend"), report("createBackend"));
}

TEST(DLLHolders, AMissingSymbolIsReportedByItsName) {
    const DLLHolder holder("Good", "");
    EXPECT_EQ(failure(holder, "noSuchFunction"), report("noSuchFunction"));
}

TEST(DLLHolders, ReleaseTheLibraryWhenDestroyed) {
    const std::string name = DLLHolder::dllFileName("Versioned", "1.2");
    {
        const DLLHolder holder("Versioned", "1.2");
        EXPECT_TRUE(isLoaded(name));
    }
    EXPECT_FALSE(isLoaded(name));
}

TEST(DLLHolders, CountTheLoadsOfOneLibrary) {
    const DLLHolder first("Versioned", "1.2");
    int (*const seven)() = first.resolve<int()>("seven");
    {
        // Destroyed at once.
        const DLLHolder second("Versioned", "1.2");
    }
    ASSERT_TRUE(isLoaded(DLLHolder::dllFileName("Versioned", "1.2")));
    EXPECT_EQ(seven(), 7);
}

struct Formatted {
    int* count;
};

std::ostream& operator<<(std::ostream& stream, const Formatted& value) {
    ++*value.count;
    return stream << "formatted";
}

TEST(AssertionStreams, FormatNothingAndRaiseNothingWhenTheConditionHolds) {
    const bool condition = true;
    int formatted = 0;
    AssertionStream assertion(&condition, "text");
    assertion << "details " << Formatted{&formatted};
    EXPECT_NO_THROW(assertion.raise());
    EXPECT_EQ(formatted, 0);
}

TEST(AssertionStreams, RaiseDetailsALineFeedAndTheFailureText) {
    const bool condition = false;
    int formatted = 0;
    AssertionStream assertion(&condition, "the fixed text");
    assertion << "details " << 7 << ' ' << Formatted{&formatted};
    try {
        assertion.raise();
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "details 7 formatted\nthe fixed text");
    }
    EXPECT_EQ(formatted, 1);
}

TEST(AssertionStreams, TestTheConditionWhenTheyAreMade) {
    bool condition = true;
    const AssertionStream assertion(&condition, "text");
    condition = false;
    EXPECT_NO_THROW(assertion.raise());
}

TEST(AssertionStreams, RaiseTheFailureTextAfterALineFeedWithoutDetails) {
    const bool condition = false;
    try {
        AssertionStream(&condition, "text").raise();
        FAIL() << "nothing was thrown";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "\ntext");
    }
}

} // namespace
