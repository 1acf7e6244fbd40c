// The version resource and the entry function, which only Windows has.

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "ImportHook.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr const char* moduleFile = "ZOL_Framework_r.2.0.8.129.dll";

int keysGivenBack = 0;

BOOL WINAPI countingTlsFree(DWORD key) {
    ++keysGivenBack;
    return TlsFree(key);
}

TEST(WindowsModule, CarriesItsVersionAsAResource) {
    const DLLHolder holder("ModuleClient", "");
    DWORD ignored = 0;
    std::vector<char> resource(GetFileVersionInfoSizeA(moduleFile, &ignored));
    ASSERT_FALSE(resource.empty());
    ASSERT_TRUE(
        GetFileVersionInfoA(moduleFile, 0, static_cast<DWORD>(resource.size()), resource.data()));
    void* value = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueA(resource.data(), "\\", &value, &size));
    const auto* const version = static_cast<const VS_FIXEDFILEINFO*>(value);
    EXPECT_EQ(version->dwFileVersionMS, 2U << 16 | 0U);
    EXPECT_EQ(version->dwFileVersionLS, 8U << 16 | 129U);
    EXPECT_EQ(version->dwProductVersionMS, 2U << 16 | 0U);
    EXPECT_EQ(version->dwProductVersionLS, 8U << 16 | 129U);

    ASSERT_TRUE(VerQueryValueA(resource.data(), "\\StringFileInfo\\040904B0\\OriginalFilename",
                               &value, &size));
    EXPECT_STREQ(static_cast<const char*>(value), moduleFile);
}

// The framework itself has no thread-local data of Boost.Thread, so it cannot show whether
// Boost.Thread was notified: ExitProbe has the same entry function and does.

TEST(WindowsModule, ItsEntryFunctionPassesThreadExitToBoostThread) {
    const DLLHolder holder("ExitProbe", "");
    void (*const watchThisThread)(int*) = holder.resolve<void(int*)>("watchThisThread");
    int cleanups = 0;
    std::thread([&] { watchThisThread(&cleanups); }).join();
    EXPECT_EQ(cleanups, 1);
}

TEST(WindowsModule, ItsEntryFunctionPassesProcessExitToBoostThread) {
    int cleanups = 0;
    {
        const DLLHolder holder("ExitProbe", "");
        ASSERT_NE(support::hookImport(GetModuleHandleA("ExitProbe_r.dll"), "TlsFree",
                                      reinterpret_cast<void*>(&countingTlsFree)),
                  nullptr);
        holder.resolve<void(int*)>("watchThisThread")(&cleanups);
        EXPECT_EQ(keysGivenBack, 0);
    }
    EXPECT_EQ(cleanups, 1) << "the unloading thread ends its use as well";
    EXPECT_EQ(keysGivenBack, 1);
}

TEST(WindowsModule, HasTheEntryFunctionThatHearsOfEndingThreads) {
    const DLLHolder holder("ModuleClient", "");
    // Boost.Thread asks for the key of its thread-local data only if it is notified of a thread's
    // end.
    EXPECT_NE(support::hookImport(GetModuleHandleA(moduleFile), "TlsFree",
                                  reinterpret_cast<void*>(&countingTlsFree)),
              nullptr);
}

} // namespace
