#include "files/BufferedLog.h"

#include <chrono>
#include <memory>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "FreshFolder.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;

namespace {

/// While it exists, no thread of the process begins, as while a module is loaded.
class LoaderLock {
public:
    LoaderLock() {
        using Lock = LONG(WINAPI*)(ULONG, ULONG*, ULONG_PTR*);
        EXPECT_EQ(function<Lock>("LdrLockLoaderLock")(0, nullptr, &cookie_), 0);
    }
    LoaderLock(const LoaderLock&) = delete;
    LoaderLock& operator=(const LoaderLock&) = delete;
    ~LoaderLock() {
        using Unlock = LONG(WINAPI*)(ULONG, ULONG_PTR);
        function<Unlock>("LdrUnlockLoaderLock")(0, cookie_);
    }

private:
    template <typename Function>
    static Function function(const char* name) {
        const auto address = GetProcAddress(GetModuleHandleA("ntdll"), name);
        return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
    }

    ULONG_PTR cookie_ = 0;
};

TEST(BufferedLogOnWindows, WritesEachLineAtOnceWhileAModuleIsLoaded) {
    inFreshFolder([] {
        RotatingLogSettings settings;
        settings.path = "zol.log";
        settings.flush.interval = 1h;
        const auto log = std::make_shared<BufferedLog>("Test", settings);
        {
            const LoaderLock lock;
            std::string text;
            for (int i = 0; i < 10; ++i) {
                const std::string line = std::to_string(i) + "\n";
                log->write(line, 0, BufferedLog::Clock::now());
                text += line;
                EXPECT_EQ(textOf("zol.log"), text);
                std::this_thread::sleep_for(5ms);
            }
        }
        log->close();
    });
}

} // namespace
