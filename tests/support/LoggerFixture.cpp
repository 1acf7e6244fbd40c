#include "LoggerFixture.h"

#include <deque>

namespace support {

namespace {

// Loggers are never destroyed and keep their channels, so what those need is never destroyed
// either.
std::deque<Journal> journals;
std::deque<std::unique_ptr<RecordingBackend>> everyBackend;

} // namespace

LoggerFixture::LoggerFixture() : journal(journals.emplace_back()) {
    static int count = 0;
    prefix_ = "test" + std::to_string(++count) + ".";
}

LoggerFixture::~LoggerFixture() {
    for (RecordingBackend* const backend : backends_) {
        backend->beforeCreate = nullptr;
        backend->beforeLog = nullptr;
        Logger::uninstallBackend(backend);
    }
}

LoggerFixture::Logger* LoggerFixture::logger(const std::string& name) const {
    return Logger::getLogger(named(name).c_str());
}

RecordingBackend& LoggerFixture::makeBackend(const std::string& name) {
    everyBackend.push_back(std::make_unique<RecordingBackend>(name, journal));
    RecordingBackend& backend = *everyBackend.back();
    backend.serves = [prefix = prefix_](const std::string& logger) {
        return logger.rfind(prefix, 0) == 0;
    };
    backends_.push_back(&backend);
    return backend;
}

RecordingBackend& LoggerFixture::installBackend(const std::string& name) {
    RecordingBackend& backend = makeBackend(name);
    install(backend);
    return backend;
}

void LoggerFixture::install(RecordingBackend& backend) {
    Logger::installBackend(&backend);
}

std::string LoggerFixture::line(const std::string& backend, int level, const std::string& text,
                                const std::string& logger) const {
    return backend + "/" + named(logger) + " " + std::to_string(level) + " " + text;
}

std::vector<std::string> LoggerFixture::asked(const RecordingBackend& backend) const {
    std::vector<std::string> names;
    for (const std::string& name : backend.asked) {
        if (name.rfind(prefix_, 0) == 0) {
            names.push_back(name.substr(prefix_.size()));
        }
    }
    return names;
}

} // namespace support
