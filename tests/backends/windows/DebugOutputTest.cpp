// The DebugOutput back end, with the test in the role of a viewer of debugger output.

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"
#include "ImportHook.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// What the system puts into the shared memory: the process id and the text.
struct Output {
    DWORD process;
    char text[4096 - sizeof(DWORD)];
};

/// What a viewer receives while a function runs, up to the first line end.
template <typename Function>
std::string viewed(Function function) {
    auto* const ready = CreateEventA(nullptr, FALSE, FALSE, "DBWIN_BUFFER_READY");
    auto* const filled = CreateEventA(nullptr, FALSE, FALSE, "DBWIN_DATA_READY");
    auto* const mapping = CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                             sizeof(Output), "DBWIN_BUFFER");
    const auto* const output =
        static_cast<const Output*>(MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, sizeof(Output)));
    if (output == nullptr) {
        ADD_FAILURE() << "no shared memory";
        return "";
    }
    std::string text;
    std::thread listener([&] {
        SetEvent(ready);
        while (text.find('\n') == std::string::npos &&
               WaitForSingleObject(filled, 10000) == WAIT_OBJECT_0) {
            if (output->process == GetCurrentProcessId()) {
                text += output->text;
            }
            SetEvent(ready);
        }
    });
    function();
    listener.join();
    return text;
}

TEST(DebugOutput, WritesALineToAViewerOfDebuggerOutput) {
    support::inFreshProcess([] {
        Logger::installBackend("DebugOutput");
        EXPECT_EQ(viewed([] { Logger::getLogger("orders")->error("sold out"); }),
                  "ERROR [orders] sold out\n");
    });
}

TEST(DebugOutput, WritesCharactersOfTheAnsiCodePageToAViewer) {
    support::inFreshProcess([] {
        Logger::installBackend("DebugOutput");
        char expected[64] = "";
        WideCharToMultiByte(CP_ACP, 0, L"ERROR [orders] Caf\u00e9\n", -1, expected,
                            sizeof(expected), nullptr, nullptr);
        EXPECT_EQ(viewed([] { Logger::getLogger("orders")->error("Caf\u00e9"); }), expected);
    });
}

TEST(DebugOutput, WritesALongMessageCompletelyToAViewer) {
    support::inFreshProcess([] {
        Logger::installBackend("DebugOutput");
        std::string message;
        while (message.size() < 20000) {
            message += std::to_string(message.size()) + ",";
        }
        const std::string text =
            viewed([&] { Logger::getLogger("orders")->error(message.c_str()); });
        EXPECT_EQ(text.size(), message.size() + 16);
        EXPECT_TRUE(text == "ERROR [orders] " + message + "\n");
    });
}

std::vector<std::wstring> debuggerTexts;

void WINAPI outputDebugString(LPCWSTR text) {
    debuggerTexts.emplace_back(text);
}

void installWithDebugger() {
    Logger::installBackend("DebugOutput");
    HMODULE const plugin = GetModuleHandleA("DebugOutput_r.dll");
    ASSERT_NE(support::hookImport(plugin, "OutputDebugStringW",
                                  reinterpret_cast<void*>(&outputDebugString)),
              nullptr);
}

TEST(DebugOutput, PassesEveryCharacterToTheDebugger) {
    support::inFreshProcess([] {
        installWithDebugger();
        Logger::getLogger("orders")->error("\u20ac \U0001F600 \u4e2d Caf\xE9");
        EXPECT_EQ(debuggerTexts, std::vector<std::wstring>{
                                     L"ERROR [orders] \u20ac \U0001F600 \u4e2d Caf\uFFFD\n"});
    });
}

TEST(DebugOutput, DividesALongMessageBetweenCharacters) {
    support::inFreshProcess([] {
        installWithDebugger();
        std::wstring expected = L"ERROR [orders] ";
        std::string message;
        for (int i = 0; i < 3000; ++i) {
            message += "\U0001F600";
            expected += L"\U0001F600";
        }
        Logger::getLogger("orders")->error(message.c_str());
        std::wstring text;
        for (const std::wstring& piece : debuggerTexts) {
            EXPECT_FALSE(IS_HIGH_SURROGATE(piece.back()));
            EXPECT_LE(piece.size(), 1000U);
            text += piece;
        }
        EXPECT_TRUE(text == expected + L"\n");
        EXPECT_EQ(debuggerTexts.size(), 7U);
    });
}

} // namespace
