#include "RecordingBackend.h"

#include <utility>

namespace support {

using namespace ZOL::Framework::GenericLogger;

class RecordingBackend::Channel final : public LoggingChannel {
public:
    Channel(RecordingBackend& backend, std::string logger)
        : backend_(backend), logger_(std::move(logger)) {}

    void release() override { ++backend_.releases; }

    void log(LoggingLevel level, const char* text) override {
        if (backend_.beforeLog) {
            backend_.beforeLog(logger_, level, text);
        }
        backend_.journal_.push_back(backend_.name_ + "/" + logger_ + " " + std::to_string(level) +
                                    " " + text);
    }

private:
    RecordingBackend& backend_;
    std::string logger_;
};

RecordingBackend::RecordingBackend(std::string name, Journal& journal)
    : name_(std::move(name)), journal_(journal) {}

RecordingBackend::~RecordingBackend() = default;

LoggingChannel* RecordingBackend::createChannel(const char* name) {
    asked.emplace_back(name);
    if (beforeCreate) {
        beforeCreate(name);
    }
    if (serves && !serves(name)) {
        return nullptr;
    }
    channels_.push_back(std::make_unique<Channel>(*this, name));
    return channels_.back().get();
}

} // namespace support
