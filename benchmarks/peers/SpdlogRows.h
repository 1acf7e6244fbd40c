#pragma once

#include <memory>
#include <mutex>
#include <string>

#include <spdlog/logger.h>
#include <spdlog/sinks/base_sink.h>
#include <spdlog/spdlog.h>

#include "../Names.h"
#include "../Texts.h"
#include "../TwoThreads.h"
#include "../Works.h"
#include "Peer.h"

/// The rows of spdlog, compiled into one module with the library and into another without.
namespace benchmarks {

/// Takes a lock, which spdlog's own null sink does not even in its kind for many threads, and
/// formats nothing.
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

inline const std::shared_ptr<SpdlogSink>& spdlogSink() {
    static const auto sink = std::make_shared<SpdlogSink>();
    return sink;
}

inline spdlog::logger& spdlogLogger() {
    static spdlog::logger logger("benchmarks", spdlogSink());
    return logger;
}

inline void runSpdlogText(std::size_t n) {
    spdlog::logger& logger = spdlogLogger();
    for (std::size_t i = 0; i < n; ++i) {
        logger.info(fortyCharacters);
    }
}

inline void runSpdlogLine(std::size_t n) {
    spdlog::logger& logger = spdlogLogger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        logger.info("text {} {} {}", static_cast<int>(i), lineNumber, word);
    }
}

inline void runSpdlogAsked(std::size_t n) {
    spdlog::logger& logger = spdlogLogger();
    for (std::size_t i = 0; i < n; ++i) {
        keep(logger.should_log(spdlog::level::debug));
    }
}

inline void runSpdlogOffLine(std::size_t n) {
    spdlog::logger& logger = spdlogLogger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        logger.debug("text {} {} {}", static_cast<int>(i), lineNumber, word);
    }
}

inline void prepareSpdlogNames() {
    static bool registered = false;
    if (!registered) {
        forAllNames([](const std::string& name) {
            spdlog::register_logger(std::make_shared<spdlog::logger>(name, spdlogSink()));
        });
        registered = true;
    }
}

template <std::size_t length>
void runSpdlogNames(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(spdlog::get(name)); });
}

inline std::size_t spdlogBytes() {
    return spdlogSink()->bytes();
}

inline Rows spdlogRows(const char* subject) {
    static const Row rows[] = {
        {plainText, Role::Peer, subject, runSpdlogText, nullptr, nullptr,
         delivered<runSpdlogText, spdlogBytes>},
        {plainTextTwoThreads, Role::Peer, subject, onTwoThreads<runSpdlogText>, nullptr, nullptr,
         delivered<onTwoThreads<runSpdlogText>, spdlogBytes>},
        {typedLine, Role::Peer, subject, runSpdlogLine, nullptr, nullptr,
         delivered<runSpdlogLine, spdlogBytes>},
        {levelAsked, Role::Peer, subject, runSpdlogAsked},
        {levelOffLine, Role::Peer, subject, runSpdlogOffLine, nullptr, nullptr,
         delivered<runSpdlogOffLine, spdlogBytes>},
        {shortNames, Role::Peer, subject, runSpdlogNames<shortNameLength>, prepareSpdlogNames},
        {longNames, Role::Peer, subject, runSpdlogNames<longNameLength>, prepareSpdlogNames},
    };
    return rowsOf(rows);
}

} // namespace benchmarks
