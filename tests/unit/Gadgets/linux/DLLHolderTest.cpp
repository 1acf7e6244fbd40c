// What the loader does with the symbols of a library. Windows has no undefined symbols.

#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include <dlfcn.h>
#include <stdexcept>

#include <gtest/gtest.h>

using ZOL::Gadgets::DLL::DLLHolder;

namespace {

TEST(DLLHolders, FailToLoadALibraryWithAnUndefinedFunction) {
    const DLLHolder holder("NeedsSeven", "");
    EXPECT_THROW(holder.resolve<int()>("one"), std::runtime_error);
}

TEST(DLLHolders, HideTheSymbolsOfTheirLibraryFromLibrariesLoadedLater) {
    const DLLHolder versioned("Versioned", "1.2");
    EXPECT_EQ(versioned.resolve<int()>("seven")(), 7);
    EXPECT_EQ(dlsym(RTLD_DEFAULT, "seven"), nullptr);
    const DLLHolder needsSeven("NeedsSeven", "");
    EXPECT_THROW(needsSeven.resolve<int()>("one"), std::runtime_error);
}

TEST(DLLHolders, LoadThatLibraryIfItsFunctionIsGlobal) {
    void* const versioned =
        dlopen(DLLHolder::dllFileName("Versioned", "1.2").c_str(), RTLD_NOW | RTLD_GLOBAL);
    ASSERT_NE(versioned, nullptr);
    {
        const DLLHolder needsSeven("NeedsSeven", "");
        EXPECT_EQ(needsSeven.resolve<int()>("fourteen")(), 14);
    }
    EXPECT_EQ(dlclose(versioned), 0);
}

} // namespace
