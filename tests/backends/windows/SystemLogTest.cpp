// The SystemLog back end with the event log functions replaced by the test.

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"
#include "ImportHook.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

struct Event {
    WORD type;
    WORD category;
    DWORD id;
    bool hasUser;
    std::wstring text;
};

std::vector<Event> events;
std::wstring eventSource;
int openSources = 0;
bool isLogFull = false;
bool isLogMissing = false;
std::vector<HANDLE> openTokens;

HANDLE WINAPI registerEventSource(LPCWSTR, LPCWSTR source) {
    if (isLogMissing) {
        SetLastError(RPC_S_SERVER_UNAVAILABLE);
        return nullptr;
    }
    ++openSources;
    eventSource = source;
    return GetCurrentProcess(); // a handle that may be closed
}

BOOL WINAPI deregisterEventSource(HANDLE) {
    --openSources;
    return TRUE;
}

BOOL WINAPI reportEvent(HANDLE, WORD type, WORD category, DWORD id, PSID user, WORD, DWORD,
                        LPCWSTR* texts, LPVOID) {
    if (isLogFull) {
        SetLastError(ERROR_LOG_FILE_FULL);
        return FALSE;
    }
    events.push_back({type, category, id, user != nullptr && IsValidSid(user), texts[0]});
    return TRUE;
}

BOOL WINAPI openProcessToken(HANDLE process, DWORD access, PHANDLE token) {
    const BOOL isOpen = OpenProcessToken(process, access, token);
    openTokens.push_back(*token);
    return isOpen;
}

BOOL WINAPI closeHandle(HANDLE handle) {
    openTokens.erase(std::remove(openTokens.begin(), openTokens.end(), handle), openTokens.end());
    return CloseHandle(handle);
}

void install() {
    ASSERT_NE(Logger::installBackend("SystemLog"), nullptr);
    HMODULE const plugin = GetModuleHandleA("SystemLog_r.dll");
    ASSERT_NE(support::hookImport(plugin, "RegisterEventSourceW",
                                  reinterpret_cast<void*>(&registerEventSource)),
              nullptr);
    ASSERT_NE(support::hookImport(plugin, "DeregisterEventSource",
                                  reinterpret_cast<void*>(&deregisterEventSource)),
              nullptr);
    ASSERT_NE(support::hookImport(plugin, "ReportEventW", reinterpret_cast<void*>(&reportEvent)),
              nullptr);
}

TEST(SystemLog, ReportsAnEventOfTheRightTypeForEachMessage) {
    support::inFreshProcess([] {
        ZOL::Framework::Framework::propertyManager()->setProperty(L"SystemLog.source",
                                                                  L"sh\u00f6p \u20ac");
        install();
        Logger::getLogger("orders")->error("sold out \xE2\x82\xAC");
        Logger::getLogger("orders")->warning("low");
        Logger::getLogger("orders")->info("fine");
        Logger::getLogger("orders")->debug("details");
        Logger::getLogger("orders")->fatal("fire");
        EXPECT_EQ(eventSource, L"sh\u00f6p \u20ac");
        ASSERT_EQ(events.size(), 5U);
        EXPECT_EQ(events[0].text, L"ERROR [orders] sold out \u20AC");
        EXPECT_EQ(events[0].type, EVENTLOG_ERROR_TYPE);
        EXPECT_EQ(events[1].type, EVENTLOG_WARNING_TYPE);
        EXPECT_EQ(events[2].type, EVENTLOG_INFORMATION_TYPE);
        EXPECT_EQ(events[3].type, EVENTLOG_SUCCESS);
        EXPECT_EQ(events[4].type, EVENTLOG_ERROR_TYPE);
        EXPECT_EQ(events[1].category, 3) << "the level";
        EXPECT_EQ(events[4].category, 5);
        for (const Event& event : events) {
            EXPECT_EQ(event.id, 1000U);
            EXPECT_TRUE(event.hasUser);
        }
    });
}

TEST(SystemLog, IsNamedZolWithoutASetting) {
    support::inFreshProcess([] {
        install();
        Logger::getLogger("orders")->info("fine");
        EXPECT_EQ(eventSource, L"ZOL");
    });
}

TEST(SystemLog, WritesAMessageInTheAnsiCodePageAndTheNextOne) {
    support::inFreshProcess([] {
        install();
        testing::internal::CaptureStderr();
        Logger::getLogger("orders")->info("Caf\xE9 \x80");
        Logger::getLogger("orders")->info("fine");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        ASSERT_EQ(events.size(), 2U);
        EXPECT_EQ(events[0].text, L"INFO [orders] Caf\uFFFD \uFFFD");
        EXPECT_EQ(events[1].text, L"INFO [orders] fine");
    });
}

TEST(SystemLog, ReplacesASourceWithABackslash) {
    support::inFreshProcess([] {
        setProperty("SystemLog.source", "my\\shop");
        testing::internal::CaptureStderr();
        install();
        Logger::getLogger("orders")->info("x");
        EXPECT_EQ(eventSource, L"ZOL");
        std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(report.substr(0, report.find_first_of("\r\n")),
                  "ZOL back end SystemLog: the property SystemLog.source is \"my\\shop\" and not a "
                  "text without backslashes; using \"ZOL\"");
    });
}

TEST(SystemLog, TruncatesAMessageThatIsTooLongForAnEvent) {
    support::inFreshProcess([] {
        install();
        Logger::getLogger("orders")->info() << std::string(100000, 'x');
        ASSERT_EQ(events.size(), 1U);
        EXPECT_EQ(events[0].text.size(), 30000U);
        EXPECT_EQ(events[0].text.substr(29990), L"xxxxxxx...");
    });
}

TEST(SystemLog, CountsMessagesDroppedWhileTheEventLogIsFull) {
    support::inFreshProcess([] {
        install();
        testing::internal::CaptureStderr();
        isLogFull = true;
        for (int i = 0; i < 10; ++i) {
            EXPECT_NO_THROW(Logger::getLogger("orders")->info("dropped"));
        }
        isLogFull = false;
        Sleep(1000);
        Logger::getLogger("orders")->info("written");
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_NE(report.find("SystemLog: messages are being lost: ReportEvent"), std::string::npos)
            << report;
        EXPECT_NE(report.find("SystemLog: works again, lost messages: 10"), std::string::npos)
            << report;
        EXPECT_EQ(events.size(), 1U);
        EXPECT_EQ(openSources, 1) << "closes the source that failed";
    });
}

TEST(SystemLog, ReportsThatTheEventLogCannotBeOpened) {
    support::inFreshProcess([] {
        install();
        testing::internal::CaptureStderr();
        isLogMissing = true;
        Logger::getLogger("orders")->info("dropped");
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_NE(report.find("messages are being lost: RegisterEventSource"), std::string::npos)
            << report;
        EXPECT_TRUE(events.empty());
        EXPECT_EQ(openSources, 0);
    });
}

TEST(SystemLog, ClosesTheTokenThatNamesTheUser) {
    support::inFreshProcess([] {
        install();
        HMODULE const plugin = GetModuleHandleA("SystemLog_r.dll");
        ASSERT_NE(support::hookImport(plugin, "OpenProcessToken",
                                      reinterpret_cast<void*>(&openProcessToken)),
                  nullptr);
        ASSERT_NE(support::hookImport(plugin, "CloseHandle", reinterpret_cast<void*>(&closeHandle)),
                  nullptr);
        Logger::getLogger("orders")->info("fine");
        EXPECT_EQ(events.size(), 1U);
        EXPECT_TRUE(openTokens.empty());
    });
}

} // namespace
