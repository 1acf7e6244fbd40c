#include "RealCollector.h"

#include <algorithm>
#include <cerrno> // program_invocation_short_name
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <thread>

#include <gtest/gtest.h>
#include <sys/mount.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "TextShape.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;

namespace realCollector {

namespace {

/// Waits until a condition holds, at most ten seconds.
template <class Condition>
void waitFor(Condition condition, const std::string& what) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        ASSERT_LT(std::chrono::steady_clock::now(), end)
            << what << "; output of the collector: " << textOf("collector.txt");
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
}

struct Severity {
    LoggingLevel level;
    const char* levelName;
    const char* name;
};

constexpr Severity severities[] = {
    {LOG_LEVEL_TRACE, "TRACE", "debug"}, {LOG_LEVEL_DEBUG, "DEBUG", "debug"},
    {LOG_LEVEL_INFO, "INFO", "info"},    {LOG_LEVEL_WARNING, "WARNING", "warning"},
    {LOG_LEVEL_ERROR, "ERROR", "err"},   {LOG_LEVEL_FATAL, "FATAL", "crit"},
};

std::string hostName() {
    char name[256] = {};
    gethostname(name, sizeof(name) - 1);
    return name;
}

/// Replaces the sign of the offset from UTC, which depends on the machine.
std::string withPlus(std::string time) {
    constexpr std::size_t offset = 6;
    if (time.size() > offset && time[time.size() - offset] == '-') {
        time[time.size() - offset] = '+';
    }
    return time;
}

} // namespace

int freePort(Collector::Kind kind) {
    return Collector(kind).port();
}

void waitForPort(Collector::Kind kind, int port) {
    char address[32];
    std::snprintf(address, sizeof(address), " 0100007F:%04X ", static_cast<unsigned>(port));
    const char* const table = kind == Collector::Kind::udp ? "/proc/net/udp" : "/proc/net/tcp";
    waitFor([&] { return textOf(table).find(address) != std::string::npos; },
            "the collector does not listen");
}

void waitForFile(const std::string& file) {
    waitFor([&] { return std::filesystem::exists(file); }, "the collector makes no " + file);
}

std::string documented(const std::string& block) {
    return textOf(std::string(DOCUMENTED_FOLDER "/") + block);
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
    std::size_t found = text.find(from);
    EXPECT_NE(found, std::string::npos) << "collectors.md shows no " << from;
    for (; found != std::string::npos; found = text.find(from, found + to.size())) {
        text.replace(found, from.size(), to);
    }
    return text;
}

void expectToCollect(int messages, int portion, const std::string& file,
                     const std::string& fraction) {
    const std::string timeShape = "0000-00-00T00:00:00" + fraction + "+00:00";
    const std::string sender = " " + hostName() + " " + program_invocation_short_name + "[" +
                               std::to_string(getpid()) + "]: user.";
    std::string expected;
    const auto isCollected = [&](int count) {
        std::error_code notYetWritten;
        const std::uintmax_t size = std::filesystem::file_size(file, notYetWritten);
        return !notYetWritten &&
               size >= expected.size() + static_cast<std::size_t>(count) * timeShape.size();
    };
    for (int i = 0; i < messages;) {
        for (const int end = std::min(i + portion, messages); i < end; ++i) {
            const Severity& severity =
                severities[static_cast<std::size_t>(i) % std::size(severities)];
            const std::string text =
                std::to_string(i) + (i % 100 == 0 ? " " + std::string(5000, 'x') + "!" : "");
            Logger::getLogger("orders")->log(severity.level) << text;
            expected.append(sender).append(severity.name).append(": ");
            expected.append(severity.levelName).append(" [orders] ").append(text).append("\n");
        }
        waitFor([&] { return isCollected(i); }, std::to_string(i) + " messages are not collected");
    }
    std::ifstream stream(file);
    std::string collected;
    int wrongTimes = 0;
    for (std::string line; std::getline(stream, line);) {
        wrongTimes += hasShape(withPlus(line.substr(0, timeShape.size())), timeShape) ? 0 : 1;
        collected += line.substr(std::min(line.size(), timeShape.size())) + "\n";
    }
    EXPECT_EQ(wrongTimes, 0);
    const auto differing = static_cast<std::size_t>(
        std::mismatch(collected.begin(), collected.end(), expected.begin(), expected.end()).first -
        collected.begin());
    EXPECT_TRUE(collected == expected)
        << "collected: " << collected.substr(differing, 200)
        << "\nexpected: " << expected.substr(std::min(differing, expected.size()), 200);
}

void leaveTheMachinesLog() {
    support::leaveTheMachinesMounts();
    std::filesystem::create_directory("dev");
    support::mountMemory("dev", "size=1m");
    for (const std::string device : {"null", "random", "urandom"}) {
        std::ofstream("dev/" + device).close();
        support::mountFile("/dev/" + device, ("dev/" + device).c_str());
    }
    support::requireMounts(mount("dev", "/dev", nullptr, MS_BIND | MS_REC, nullptr) == 0, "/dev");
}

} // namespace realCollector
