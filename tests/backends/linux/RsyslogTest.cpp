// The Network back end and the real rsyslogd, with the configurations of collectors.md.

#include <fstream>
#include <string>

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

void writeConfiguration(const std::string& documented, int port) {
    const std::string folder = std::filesystem::current_path().string();
    std::ofstream("rsyslog.conf") << "global(workDirectory=\"" << folder << "\")\n"
                                  << replaced(replaced(documented, "5170", std::to_string(port)),
                                              "/var/log/shop.log", folder + "/" + log);
}

/// Runs rsyslogd with a block of the page, and installs the back end for it.
void collectWithRsyslog(const std::string& documented, Collector::Kind kind, int messages,
                        int portion) {
    const int port = freePort(kind);
    writeConfiguration(documented, port);
    const Daemon rsyslog({"/usr/sbin/rsyslogd", "-n", "-f", "rsyslog.conf", "-i", "rsyslog.pid"},
                         "collector.txt");
    waitForPort(kind, port);
    setProperty("Network.port", std::to_string(port));
    setProperty("Network.protocol", kind == Collector::Kind::udp ? "udp" : "tcp");
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
    expectToCollect(messages, portion, log);
}

TEST(Rsyslog, CollectsEachMessageByTcp) {
    inFreshFolder([] {
        collectWithRsyslog(documented("rsyslog_tcp.conf"), Collector::Kind::tcp, 20000, 20000);
    });
}

TEST(Rsyslog, CollectsEachMessageByItsOtherTcpInput) {
    inFreshFolder([] {
        collectWithRsyslog(replaced(documented("rsyslog_tcp.conf"), "imtcp", "imptcp"),
                           Collector::Kind::tcp, 20000, 20000);
    });
}

TEST(Rsyslog, CollectsEachMessageByUdp) {
    inFreshFolder([] {
        const std::string tcp = documented("rsyslog_tcp.conf");
        const std::size_t secondLine = tcp.find('\n') + 1;
        const std::size_t fourthLine = tcp.find("template(");
        // 50 messages fit the buffer of the socket.
        collectWithRsyslog(tcp.substr(0, secondLine) + documented("rsyslog_udp.conf") +
                               tcp.substr(fourthLine),
                           Collector::Kind::udp, 1000, 50);
    });
}

} // namespace
