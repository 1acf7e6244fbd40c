#include <cstddef>
#include <memory>

#include <spdlog/logger.h>
#include <spdlog/sinks/rotating_file_sink.h>

#include "FilePeer.h"

namespace {

using namespace benchmarks;

std::unique_ptr<spdlog::logger> logger;

void open(const char* path, bool isFlushed) {
    constexpr std::size_t maxFiles = 5;
    auto sink = std::make_shared<spdlog::sinks::rotating_file_sink_mt>(
        path, static_cast<std::size_t>(fileRotationBytes), maxFiles);
    sink->set_pattern("%Y-%m-%d %H:%M:%S.%e %l [%n] %v");
    logger = std::make_unique<spdlog::logger>(fileLogger, std::move(sink));
    if (isFlushed) {
        logger->flush_on(spdlog::level::trace);
    }
}

void close() {
    logger.reset();
}

struct Spdlog {
    spdlog::logger& target = *logger;

    void logText() { target.info(fortyCharacters); }
};

} // namespace

void benchmarkFileSubject(FileSubject& subject) {
    subject = {open, logTimed<Spdlog>, close};
}
