#include <cstdlib>
#include <ctime>

#include <glog/logging.h>

#include "Peer.h"

namespace {

using namespace benchmarks;

/// The library calls all its sinks under one lock.
class DiscardingSink final : public google::LogSink {
public:
    void send(google::LogSeverity, const char*, const char*, int, const google::LogMessageTime&,
              const char*, std::size_t length) override {
        bytes += length;
    }

    std::size_t bytes = 0;
};

DiscardingSink sink;

// Only this sink gets the text: no file, and not standard error.
#define LOG_TO_SINK_ALONE(severity) LOG_TO_SINK_BUT_NOT_TO_LOGFILE(&sink, severity)

// Without TZ in the environment, the C library checks the machine's time zone file for each line.
void setTimeZone() {
    setenv("TZ", "UTC0", 1);
    tzset();
}

void unsetTimeZone() {
    unsetenv("TZ");
    tzset();
}

void runText(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        LOG_TO_SINK_ALONE(INFO) << fortyCharacters;
    }
}

void runLine(std::size_t n) {
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        LOG_TO_SINK_ALONE(INFO) << lineStart << static_cast<int>(i) << ' ' << lineNumber << ' '
                                << word;
    }
}

void runAsked(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        keep(VLOG_IS_ON(1));
    }
}

void runOffLine(std::size_t n) {
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        VLOG(1) << lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word;
    }
}

std::size_t totalBytes() {
    return sink.bytes;
}

constexpr const char* subject = "glog";
constexpr const char* withTimeZone = "glog, TZ set";

constexpr Row rows[] = {
    {plainText, Role::Peer, subject, runText, unsetTimeZone, nullptr,
     delivered<runText, totalBytes>},
    {plainText, Role::Peer, withTimeZone, runText, setTimeZone, unsetTimeZone,
     delivered<runText, totalBytes>},
    {plainTextTwoThreads, Role::Peer, withTimeZone, onTwoThreads<runText>, setTimeZone,
     unsetTimeZone, delivered<onTwoThreads<runText>, totalBytes>},
    {typedLine, Role::Peer, subject, runLine, unsetTimeZone, nullptr,
     delivered<runLine, totalBytes>},
    {typedLine, Role::Peer, withTimeZone, runLine, setTimeZone, unsetTimeZone,
     delivered<runLine, totalBytes>},
    {levelAsked, Role::Peer, subject, runAsked},
    {levelOffLine, Role::Peer, subject, runOffLine, nullptr, nullptr,
     delivered<runOffLine, totalBytes>},
};

} // namespace

Rows benchmarkRows() {
    return rowsOf(rows);
}
