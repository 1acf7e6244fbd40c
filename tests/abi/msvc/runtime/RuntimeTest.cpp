// The start-up code that is linked into modules and programs in place of Visual C++'s.

#include <atomic>
#include <chrono>
#include <cstdint>
#include <exception>
#include <mutex>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <process.h>
#include <windows.h>

using Steps = std::vector<std::string>;

namespace {

std::mutex mutex;
Steps steps;

/// The steps since the last call.
Steps takeSteps() {
    const std::lock_guard<std::mutex> lock(mutex);
    Steps taken;
    taken.swap(steps);
    return taken;
}

class Probe {
public:
    Probe() : module_(LoadLibraryW(L"RuntimeProbe.dll")) {}
    Probe(const Probe&) = delete;
    Probe& operator=(const Probe&) = delete;
    ~Probe() { FreeLibrary(module_); }

    int* createOnce(int* (*create)()) const {
        const auto function = reinterpret_cast<int* (*)(int* (*)())>(
            reinterpret_cast<void*>(GetProcAddress(module_, "createOnce")));
        return function(create);
    }

private:
    HMODULE module_;
};

} // namespace

extern "C" __declspec(dllexport) void traceOfRuntime(const char* step) {
    const std::lock_guard<std::mutex> lock(mutex);
    steps.emplace_back(step);
}

namespace {

TEST(MsvcRuntime, AttachesInVisualCxxsOrder) {
    takeSteps();
    const Probe probe;
    EXPECT_EQ(takeSteps(), Steps({"raw", "attach", "constructor", "constructor of the thread",
                                  "DllMain", "attach"}));
}

TEST(MsvcRuntime, DetachesInVisualCxxsOrder) {
    {
        const Probe probe;
        takeSteps();
    }
    EXPECT_EQ(takeSteps(), Steps({"destructor of the thread", "DllMain", "detach", "destructor",
                                  "raw", "detach"}));
}

TEST(MsvcRuntime, MakesAndDestroysTheObjectsOfAThread) {
    const Probe probe;
    takeSteps();
    std::thread([] {}).join();
    EXPECT_EQ(takeSteps(), Steps({"constructor of the thread", "raw", "thread attach", "DllMain",
                                  "thread attach", "destructor of the thread", "DllMain",
                                  "thread detach", "raw", "thread detach"}));
}

std::atomic<int> creations{0};

int* createSlowly() {
    ++creations;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    static int created = 0;
    return &created;
}

TEST(MsvcRuntime, CreatesAStaticObjectOnceAndMakesOtherThreadsWait) {
    const Probe probe;
    std::atomic<int> complete{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            if (probe.createOnce(createSlowly) != nullptr) {
                ++complete;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(creations, 1);
    EXPECT_EQ(complete, 8);
}

int failures = 0;

int* failOnce() {
    if (++failures == 1) {
        throw std::runtime_error("not yet");
    }
    static int created = 0;
    return &created;
}

TEST(MsvcRuntime, TriesAgainAfterAnExceptionInAStaticObject) {
    const Probe probe;
    EXPECT_THROW(probe.createOnce(failOnce), std::runtime_error);
    EXPECT_NE(probe.createOnce(failOnce), nullptr);
    EXPECT_EQ(failures, 2);
}

TEST(MsvcRuntime, ThrowsIfThereIsNoMemory) {
    const volatile std::size_t tooMuch = static_cast<std::size_t>(-1) / 4;
    EXPECT_THROW(::operator delete(::operator new(tooMuch)), std::bad_alloc);
    EXPECT_THROW(::operator delete[](::operator new[](tooMuch)), std::bad_alloc);
    EXPECT_EQ(::operator new(tooMuch, std::nothrow), nullptr);
    EXPECT_EQ(::operator new[](tooMuch, std::nothrow), nullptr);
    EXPECT_THROW(
        ::operator delete(::operator new(tooMuch, std::align_val_t(64)), std::align_val_t(64)),
        std::bad_alloc);
}

TEST(MsvcRuntime, AllocatesEmptyAndAlignedBlocks) {
    void* const first = ::operator new(0);
    void* const second = ::operator new(0);
    EXPECT_NE(first, second);
    ::operator delete(first);
    ::operator delete(second);
    for (const std::size_t alignment : {std::size_t{32}, std::size_t{64}, std::size_t{4096}}) {
        void* const block = ::operator new(1, std::align_val_t(alignment));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignment, 0U);
        ::operator delete(block, std::align_val_t(alignment));
    }
}

TEST(MsvcRuntimeDeathTest, EndsByTerminateAfterAnUncaughtException) {
    EXPECT_EXIT(
        {
            std::thread([] {
                std::set_terminate([] { _exit(42); }); // of this thread, with this runtime
                throw std::runtime_error("uncaught");
            }).join();
        },
        testing::ExitedWithCode(42), "");
}

} // namespace
