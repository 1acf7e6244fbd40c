// The back ends Network and SystemLog and the real rsyslogd, with the configurations of
// collectors.md.

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "Daemon.h"
#include "FreshFolder.h"
#include "Property.h"
#include "RealCollector.h"

using namespace ZOL::Framework::GenericLogger;
using namespace realCollector;

namespace {

constexpr const char* log = "shop.log";

/// Runs rsyslogd with blocks of the page, with another file than theirs. Its current folder is the
/// root.
std::unique_ptr<Daemon> runRsyslog(const std::string& documented) {
    const std::string folder = std::filesystem::current_path().string();
    std::ofstream("rsyslog.conf") << "global(workDirectory=\"" << folder << "\")\n"
                                  << replaced(documented, "/var/log/shop.log", folder + "/" + log);
    return std::make_unique<Daemon>(std::vector<std::string>{"/usr/sbin/rsyslogd", "-n", "-f",
                                                             "rsyslog.conf", "-i",
                                                             folder + "/rsyslog.pid"},
                                    "collector.txt");
}

void collectFromNetwork(const std::string& documented, Collector::Kind kind, int messages,
                        int portion) {
    const int port = freePort(kind);
    const auto rsyslog = runRsyslog(replaced(documented, "5170", std::to_string(port)));
    waitForPort(kind, port);
    setProperty("Network.port", std::to_string(port));
    setProperty("Network.protocol", kind == Collector::Kind::udp ? "udp" : "tcp");
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
    expectToCollect(messages, portion, log);
}

/// The block for TCP with other inputs.
std::string withInputs(const std::string& inputs) {
    const std::string tcp = documented("rsyslog_tcp.conf");
    return tcp.substr(0, tcp.find("module(")) + inputs + tcp.substr(tcp.find("template("));
}

TEST(Rsyslog, CollectsEachMessageByTcp) {
    inFreshFolder([] {
        collectFromNetwork(documented("rsyslog_tcp.conf"), Collector::Kind::tcp, 20000, 20000);
    });
}

TEST(Rsyslog, CollectsEachMessageByItsOtherTcpInput) {
    inFreshFolder([] {
        collectFromNetwork(replaced(documented("rsyslog_tcp.conf"), "imtcp", "imptcp"),
                           Collector::Kind::tcp, 20000, 20000);
    });
}

TEST(Rsyslog, CollectsEachMessageByUdp) {
    inFreshFolder([] {
        // 50 messages fit the buffer of the socket.
        collectFromNetwork(withInputs(documented("rsyslog_udp.conf")), Collector::Kind::udp, 1000,
                           50);
    });
}

TEST(Rsyslog, CollectsEachMessageOfSystemLog) {
    inFreshFolder([] {
        leaveTheMachinesLog();
        // On a machine with systemd, the module would take the messages from the journal.
        const auto rsyslog =
            runRsyslog(withInputs("module(load=\"imuxsock\" SysSock.Name=\"/dev/log\")\n") +
                       "if prifilt(\"user.*\") then call shop\n");
        waitForFile("/dev/log");
        ASSERT_NE(Logger::installBackend("SystemLog"), nullptr);
        expectToCollect(2000, 2000, log, ".000000");
    });
}

} // namespace
