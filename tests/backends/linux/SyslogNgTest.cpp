// The back ends Network and SystemLog and the real syslog-ng, with the configuration of
// collectors.md.

#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
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
namespace fs = std::filesystem;

namespace {

constexpr const char* log = "shop.log";

/// The folder of the modules, whose name is the version.
std::string moduleFolder(const std::string& libraries) {
    for (const auto& entry : fs::directory_iterator(libraries)) {
        if (entry.is_directory() && fs::exists(entry.path() / "libaffile.so")) {
            return entry.path().string();
        }
    }
    throw std::runtime_error("syslog-ng has no modules in " + libraries);
}

std::vector<std::string> command() {
    const std::string folder = SYSLOG_NG_FOLDER;
    const std::string libraries = folder + "/usr/lib/syslog-ng";
    return {"/usr/bin/env",
            "LD_LIBRARY_PATH=" + libraries + ":" + folder + "/usr/lib/x86_64-linux-gnu",
            folder + "/usr/sbin/syslog-ng",
            "--foreground",
            "--no-caps",
            "--stderr",
            "--module-path=" + moduleFolder(libraries),
            "--cfgfile=syslog-ng.conf",
            "--persist-file=syslog-ng.persist",
            "--pidfile=syslog-ng.pid",
            "--control=syslog-ng.ctl"};
}

/// Runs syslog-ng with a configuration that has another file than the page.
std::unique_ptr<Daemon> runSyslogNg(const std::string& configuration) {
    std::ofstream("syslog-ng.conf")
        << "@version: current\n"
        << replaced(configuration, "/var/log/shop.log", (fs::current_path() / log).string());
    return std::make_unique<Daemon>(command(), "collector.txt");
}

void collectFromNetwork(Collector::Kind kind, int messages, int portion) {
    const int port = freePort(kind);
    const auto syslogNg =
        runSyslogNg(replaced(documented("syslog_ng.conf"), "5170", std::to_string(port)));
    waitForPort(kind, port);
    setProperty("Network.port", std::to_string(port));
    setProperty("Network.protocol", kind == Collector::Kind::udp ? "udp" : "tcp");
    ASSERT_NE(Logger::installBackend("Network"), nullptr);
    expectToCollect(messages, portion, log);
}

void collectFromSystemLog(const std::string& source) {
    leaveTheMachinesLog();
    const std::string page = documented("syslog_ng.conf");
    const auto syslogNg =
        runSyslogNg("source s_shop { " + source + " };\n" + page.substr(page.find("destination ")));
    waitForFile("/dev/log");
    ASSERT_NE(Logger::installBackend("SystemLog"), nullptr);
    expectToCollect(2000, 2000, log);
}

TEST(SyslogNg, CollectsEachMessageByTcp) {
    inFreshFolder([] { collectFromNetwork(Collector::Kind::tcp, 20000, 20000); });
}

TEST(SyslogNg, CollectsEachMessageByUdp) {
    inFreshFolder([] { collectFromNetwork(Collector::Kind::udp, 1000, 50); });
}

TEST(SyslogNg, CollectsEachMessageOfSystemLogFromADatagramSocket) {
    inFreshFolder([] { collectFromSystemLog("unix-dgram(\"/dev/log\" log-msg-size(65536));"); });
}

TEST(SyslogNg, CollectsEachMessageOfSystemLogFromAStreamSocket) {
    inFreshFolder([] { collectFromSystemLog("unix-stream(\"/dev/log\" log-msg-size(65536));"); });
}

} // namespace
