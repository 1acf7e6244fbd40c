// The Console back end on a console, whose functions are replaced by the test, and elsewhere.

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "DoLog.h"
#include "FreshProcess.h"
#include "ImportHook.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr WORD blueBackground = BACKGROUND_BLUE;
constexpr WORD attributesBefore = blueBackground | FOREGROUND_RED;

WORD attributes = attributesBefore;
std::vector<std::wstring> calls;
std::wstring shown; // with <attributes> at each change
bool fails = false;

BOOL WINAPI getConsoleMode(HANDLE, LPDWORD mode) {
    *mode = 0;
    return TRUE;
}

BOOL WINAPI getConsoleScreenBufferInfo(HANDLE, PCONSOLE_SCREEN_BUFFER_INFO info) {
    *info = {};
    info->wAttributes = attributes;
    return TRUE;
}

BOOL WINAPI setConsoleTextAttribute(HANDLE, WORD changed) {
    attributes = changed;
    shown += L"<" + std::to_wstring(changed) + L">";
    return TRUE;
}

BOOL WINAPI writeConsole(HANDLE, const void* text, DWORD size, LPDWORD written, LPVOID) {
    if (fails) {
        SetLastError(ERROR_BROKEN_PIPE);
        return FALSE;
    }
    calls.emplace_back(static_cast<const wchar_t*>(text), size);
    shown += calls.back();
    *written = size;
    return TRUE;
}

std::string bytesWritten;
DWORD room = 0; // of a pipe

/// A pipe that does not block takes what it has room for.
BOOL WINAPI writeFile(HANDLE, const void* data, DWORD size, LPDWORD written, LPOVERLAPPED) {
    *written = std::min({size, room, DWORD{3}});
    room -= *written;
    bytesWritten.append(static_cast<const char*>(data), *written);
    return TRUE;
}

void hook(const char* plugin, const char* function, void* replacement) {
    ASSERT_NE(support::hookImport(GetModuleHandleA(plugin), function, replacement), nullptr)
        << function;
}

/// Makes standard error of a loaded plug-in a console.
void showConsole(const char* plugin) {
    hook(plugin, "GetConsoleMode", reinterpret_cast<void*>(&getConsoleMode));
    hook(plugin, "GetConsoleScreenBufferInfo",
         reinterpret_cast<void*>(&getConsoleScreenBufferInfo));
    hook(plugin, "SetConsoleTextAttribute", reinterpret_cast<void*>(&setConsoleTextAttribute));
    hook(plugin, "WriteConsoleW", reinterpret_cast<void*>(&writeConsole));
}

Logger* installConsole(const char* pattern = "%v") {
    setProperty("Console.pattern", pattern);
    Logger::installBackend("Console");
    return Logger::getLogger("orders");
}

TEST(ConsoleOnTerminal, ShowsUtf8AsUtf16) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole();
        showConsole("Console_r.dll");
        logger->info("\xC3\xA4 \xE2\x82\xAC \xF0\x9F\x98\x80");
        ASSERT_EQ(calls.size(), 1U) << "one call without colours";
        EXPECT_EQ(calls[0], L"INFO [orders] \u00E4 \u20AC \xD83D\xDE00\r\n");
    });
}

TEST(ConsoleOnTerminal, SplitsALongLineBetweenCharactersOnly) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole();
        showConsole("Console_r.dll");
        std::string text;
        std::wstring expected = L"INFO [orders] ";
        for (int i = 0; i < 20000; ++i) {
            text += i == 0 ? "x" : "\xF0\x9F\x98\x80";
            expected += i == 0 ? L"x" : L"\xD83D\xDE00";
        }
        logger->info() << text;
        EXPECT_TRUE(shown == expected + L"\r\n");
        for (const std::wstring& call : calls) {
            EXPECT_LE(call.size(), 8192U);
            EXPECT_FALSE(IS_HIGH_SURROGATE(call.back()));
        }
    });
}

TEST(ConsoleOnTerminal, HasTheColourOfTheLevelAndKeepsTheBackground) {
    support::inFreshProcess([] {
        Logger* logger = installConsole("a%^%v%$b");
        showConsole("Console_r.dll");
        const auto shownAt = [&](int level) {
            shown.clear();
            support::doLog(logger, static_cast<LoggingLevel>(level), "x");
            return shown;
        };
        const auto line = [](WORD colour, const wchar_t* level) {
            return L"a<" + std::to_wstring(blueBackground | colour) + L">" + level +
                   L" [orders] x<" + std::to_wstring(attributesBefore) + L">b\r\n";
        };
        EXPECT_EQ(shownAt(10), line(7, L"TRACE"));
        EXPECT_EQ(shownAt(20), line(3, L"DEBUG"));
        EXPECT_EQ(shownAt(30), line(2, L"INFO"));
        EXPECT_EQ(shownAt(40), line(14, L"WARNING"));
        EXPECT_EQ(shownAt(50), line(12, L"ERROR"));
        EXPECT_EQ(shownAt(60), line(79, L"FATAL"));
    });
}

TEST(ConsoleOnTerminal, WritesALineInPartsToAPipeThatTakesOnlyParts) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole();
        hook("Console_r.dll", "WriteFile", reinterpret_cast<void*>(&writeFile));
        room = 1000;
        logger->info("x");
        EXPECT_EQ(bytesWritten, "INFO [orders] x\r\n");
        room = 0;
        logger->info("dropped");
        room = 1000;
        bytesWritten.clear();
        logger->info("y");
        EXPECT_EQ(bytesWritten, "INFO [orders] y\r\n"
                                "ZOL back end Console: works again, lost messages: 1\r\n");
    });
}

TEST(ConsoleOnTerminal, HasNoColoursIfColourIsNever) {
    support::inFreshProcess([] {
        setProperty("Console.colour", "never");
        Logger* const logger = installConsole("%^%v%$");
        showConsole("Console_r.dll");
        logger->error("x");
        EXPECT_EQ(shown, L"ERROR [orders] x\r\n");
    });
}

TEST(ConsoleOnTerminal, ShowsReportsAsUtf16) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole();
        showConsole("Console_r.dll");
        fails = true;
        logger->info("dropped");
        fails = false;
        logger->info("written");
        EXPECT_EQ(shown, L"INFO [orders] written\r\n"
                         L"ZOL back end Console: works again, lost messages: 1\r\n");
    });
}

TEST(ConsoleOnTerminal, RestoresTheColourIfALineCannotBeWritten) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole("%^%v%$");
        showConsole("Console_r.dll");
        fails = true;
        logger->info("dropped");
        EXPECT_EQ(attributes, attributesBefore);
    });
}

/// What the action writes to standard error, which is a pipe meanwhile.
template <typename Action>
std::string writtenToAPipe(Action action) {
    HANDLE reader = nullptr;
    HANDLE writer = nullptr;
    EXPECT_NE(CreatePipe(&reader, &writer, nullptr, 65536), FALSE);
    auto* const before = GetStdHandle(STD_ERROR_HANDLE);
    SetStdHandle(STD_ERROR_HANDLE, writer);
    action();
    SetStdHandle(STD_ERROR_HANDLE, before);
    CloseHandle(writer);
    std::string text;
    std::array<char, 4096> buffer{};
    DWORD size = 0;
    while (ReadFile(reader, buffer.data(), buffer.size(), &size, nullptr) != FALSE && size > 0) {
        text.append(buffer.data(), size);
    }
    CloseHandle(reader);
    return text;
}

TEST(ConsoleOnPipe, WritesUtf8WithoutColours) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole("%^%v%$");
        EXPECT_EQ(writtenToAPipe([&] { logger->info("\xE2\x82\xAC"); }),
                  "INFO [orders] \xE2\x82\xAC\r\n");
    });
}

TEST(ConsoleOnPipe, HasEscapeCodesIfColourIsAlways) {
    support::inFreshProcess([] {
        setProperty("Console.colour", "always");
        Logger* const logger = installConsole("<%^%v%$>");
        EXPECT_EQ(writtenToAPipe([&] { logger->info("x"); }),
                  "<\x1b[32mINFO [orders] x\x1b[m>\r\n");
    });
}

TEST(ConsoleOnPipe, CountsDropsOfAPipeWithoutAReader) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole();
        HANDLE reader = nullptr;
        HANDLE writer = nullptr;
        ASSERT_NE(CreatePipe(&reader, &writer, nullptr, 0), FALSE);
        CloseHandle(reader);
        auto* const before = GetStdHandle(STD_ERROR_HANDLE);
        SetStdHandle(STD_ERROR_HANDLE, writer);
        logger->info("dropped");
        SetStdHandle(STD_ERROR_HANDLE, before);
        CloseHandle(writer);
        EXPECT_EQ(writtenToAPipe([&] { logger->info("written"); }),
                  "INFO [orders] written\r\n"
                  "ZOL back end Console: works again, lost messages: 1\r\n");
    });
}

TEST(ConsoleOnPipe, DiscardsMessagesOfAProcessWithoutStandardError) {
    support::inFreshProcess([] {
        Logger* const logger = installConsole();
        auto* const before = GetStdHandle(STD_ERROR_HANDLE);
        for (HANDLE none : {HANDLE{nullptr}, INVALID_HANDLE_VALUE}) {
            SetStdHandle(STD_ERROR_HANDLE, none);
            logger->info("discarded");
        }
        SetStdHandle(STD_ERROR_HANDLE, before);
        EXPECT_EQ(writtenToAPipe([&] { logger->info("written"); }), "INFO [orders] written\r\n");
    });
}

} // namespace
