// What only the sockets of Windows have.

#include "SocketHeaders.h" // which must precede windows.h

#include "Connection.h"

#include <chrono>

#include <gtest/gtest.h>

#include "Collector.h"
#include "ImportHook.h"

using namespace ZOL::Backends;

namespace {

decltype(&WSASocketW) nextSocket = nullptr;
SOCKET lastSocket = INVALID_SOCKET;

SOCKET WINAPI openSocket(int family, int type, int protocol, LPWSAPROTOCOL_INFOW info, GROUP group,
                         DWORD flags) {
    lastSocket = nextSocket(family, type, protocol, info, group, flags);
    return lastSocket;
}

TEST(Connection, IsNotInheritedByChildProcesses) {
    Collector collector(Collector::Kind::tcp);
    nextSocket = reinterpret_cast<decltype(nextSocket)>(support::hookImport(
        GetModuleHandleA(nullptr), "WSASocketW", reinterpret_cast<void*>(&openSocket)));
    ASSERT_NE(nextSocket, nullptr);
    StatementTimeout timeout(std::chrono::seconds(20));
    const Connection connection(Connection::Protocol::tcp, "127.0.0.1", collector.port(), timeout);
    support::hookImport(GetModuleHandleA(nullptr), "WSASocketW",
                        reinterpret_cast<void*>(nextSocket));
    DWORD flags = HANDLE_FLAG_INHERIT;
    // NOLINTNEXTLINE(performance-no-int-to-ptr): a SOCKET is a handle
    ASSERT_NE(GetHandleInformation(reinterpret_cast<HANDLE>(lastSocket), &flags), FALSE);
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
}

} // namespace
