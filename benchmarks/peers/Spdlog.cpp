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
class SpdlogSink final : public spdlog::sinks::base_sink<std::mutex> {
public:
    std::size_t bytes() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return bytes_;
    }

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        bytes_ += message.payload.size();
    }
    void flush_() override {}

    std::size_t bytes_ = 0;
};

struct Spdlog {
    static const std::shared_ptr<SpdlogSink>& sink() {
        static const auto sink = std::make_shared<SpdlogSink>();
        return sink;
    }

    static spdlog::logger& logger() {
        static spdlog::logger logger("benchmarks", sink());
        return logger;
    }

    static void runText(std::size_t n) {
        spdlog::logger& target = logger();
        for (std::size_t i = 0; i < n; ++i) {
            target.info(fortyCharacters);
        }
    }

    static void runLine(std::size_t n) {
        spdlog::logger& target = logger();
        const std::string& word = lineWord();
        for (std::size_t i = 0; i < n; ++i) {
            target.info("text {} {} {}", static_cast<int>(i), lineNumber, word);
        }
    }

    static void runAsked(std::size_t n) {
        spdlog::logger& target = logger();
        for (std::size_t i = 0; i < n; ++i) {
            keep(target.should_log(spdlog::level::debug));
        }
    }

    static void runOffLine(std::size_t n) {
        spdlog::logger& target = logger();
        const std::string& word = lineWord();
        for (std::size_t i = 0; i < n; ++i) {
            target.debug("text {} {} {}", static_cast<int>(i), lineNumber, word);
        }
    }

    static void prepareNames() {
        static bool registered = false;
        if (!registered) {
            forAllNames([](const std::string& name) {
                spdlog::register_logger(std::make_shared<spdlog::logger>(name, sink()));
            });
            registered = true;
        }
    }

    template <std::size_t length>
    static void runNames(std::size_t n) {
        inTurn<length>(n, [](const std::string& name) { keep(spdlog::get(name)); });
    }

    static std::size_t totalBytes() { return sink()->bytes(); }
};

} // namespace

// Built twice: from headers only, and with the compiled library.
Rows benchmarkRows() {
#if defined(SPDLOG_COMPILED_LIB)
    return rowsOfPeer<Spdlog>("spdlog library");
#else
    return rowsOfPeer<Spdlog>("spdlog header-only");
#endif
}
