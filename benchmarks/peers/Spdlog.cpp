#include <memory>
#include <mutex>
#include <string>

#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/spdlog.h>

#include "Peer.h"

namespace {

using namespace benchmarks;

/// Takes a lock, unlike spdlog's own null_sink_mt, and formats nothing.
class DiscardSink final : public spdlog::sinks::base_sink<std::mutex> {
public:
    ByteCounter counter;

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        counter.add(message.payload.size());
    }
    void flush_() override {}
};

const std::shared_ptr<DiscardSink>& sink() {
    static const auto sink = std::make_shared<DiscardSink>();
    return sink;
}

spdlog::logger& logger() {
    static spdlog::logger logger("benchmarks", sink());
    return logger;
}

struct Spdlog {
    spdlog::logger& target = logger();
    const std::string& word = lineWord();

    void logText() { target.info(fortyCharacters); }
    void logLine(int number) { target.info("text {} {} {}", number, lineNumber, word); }
    bool isDebugActive() { return target.should_log(spdlog::level::debug); }
    void logDebugLine(int number) { target.debug("text {} {} {}", number, lineNumber, word); }

    static void prepareNames() {
        static bool registered = false;
        if (!registered) {
            forAllNames([](const std::string& name) {
                spdlog::register_logger(std::make_shared<spdlog::logger>(name, sink()));
            });
            registered = true;
        }
    }
    auto find(const std::string& name) { return spdlog::get(name); }

    static ByteCounter& counter() { return sink()->counter; }
};

} // namespace

// Built twice: from headers only, and with the compiled library.
void benchmarkRows(std::vector<Row>& rows) {
#if defined(SPDLOG_COMPILED_LIB)
    rows = SubjectRows<Spdlog>{Role::Peer, "spdlog library"}.all();
#else
    rows = SubjectRows<Spdlog>{Role::Peer, "spdlog header-only"}.all();
#endif
}
