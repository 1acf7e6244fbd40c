#include <cstdlib>
#include <ctime>

#include <glog/logging.h>

#include "Peer.h"

namespace {

using namespace benchmarks;

/// The library calls all its sinks under one lock.
class DiscardSink final : public google::LogSink {
public:
    void send(google::LogSeverity, const char*, const char*, int, const google::LogMessageTime&,
              const char*, std::size_t length) override {
        counter.add(length);
    }

    ByteCounter counter;
};

DiscardSink sink;

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

struct Glog {
    const std::string& word = lineWord();

    void logText() { LOG_TO_SINK_ALONE(INFO) << fortyCharacters; }
    void logLine(int number) {
        LOG_TO_SINK_ALONE(INFO) << lineStart << number << ' ' << lineNumber << ' ' << word;
    }
    bool isDebugActive() { return VLOG_IS_ON(1); }
    void logDebugLine(int number) {
        VLOG(1) << lineStart << number << ' ' << lineNumber << ' ' << word;
    }

    static ByteCounter& counter() { return sink.counter; }
};

} // namespace

void benchmarkRows(std::vector<Row>& rows) {
    const SubjectRows<Glog> plain = {Role::Peer, "glog", unsetTimeZone};
    const SubjectRows<Glog> withTimeZone = {Role::Peer, "glog, TZ set", setTimeZone, unsetTimeZone};
    rows = {plain.text(),     withTimeZone.text(), withTimeZone.textOnTwoThreads(),
            plain.line(),     withTimeZone.line(), plain.level(),
            plain.debugLine()};
}
