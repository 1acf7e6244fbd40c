// The DebugOutput back end, with the test in the role of a viewer of debugger output.

#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// What the system puts into the shared memory: the process id and the text.
struct Output {
    DWORD process;
    char text[4096 - sizeof(DWORD)];
};

TEST(DebugOutput, WritesALineToAViewerOfDebuggerOutput) {
    support::inFreshProcess([] {
        auto* const ready = CreateEventA(nullptr, FALSE, FALSE, "DBWIN_BUFFER_READY");
        auto* const filled = CreateEventA(nullptr, FALSE, FALSE, "DBWIN_DATA_READY");
        auto* const mapping = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                                 sizeof(Output), "DBWIN_BUFFER");
        const auto* const output =
            static_cast<const Output*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, sizeof(Output)));
        ASSERT_NE(output, nullptr);

        std::string text;
        std::thread listener([&] {
            SetEvent(ready);
            while (WaitForSingleObject(filled, 10000) == WAIT_OBJECT_0) {
                if (output->process == GetCurrentProcessId()) {
                    text = output->text;
                    return;
                }
                SetEvent(ready);
            }
        });
        Logger::installBackend("DebugOutput");
        Logger::getLogger("orders")->error("sold out");
        listener.join();
        EXPECT_EQ(text, "ERROR [orders] sold out\n");
    });
}

} // namespace
