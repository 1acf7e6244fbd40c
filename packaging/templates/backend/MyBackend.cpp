// Appends every message to the file that the property MyBackend.path names.

#include <fstream>
#include <map>
#include <string>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Framework;
using ZOL::Framework::Management::WideString;

namespace {

constexpr const char* pathProperty = "MyBackend.path";
constexpr const char* defaultPath = "messages.log";

/// An ASCII setting that the host put into the property store.
std::string setting(const std::string& name, const std::string& fallback) {
    const WideString wideName(name.begin(), name.end());
    if (!Framework::propertyManager()->hasProperty(wideName)) {
        return fallback;
    }
    std::string value;
    for (const auto unit : Framework::propertyManager()->readProperty(wideName)) {
        value += static_cast<char>(unit);
    }
    return value;
}

class MyChannel : public LoggingChannel {
public:
    MyChannel(std::ofstream& file, const char* logger) : file_(file), logger_(logger) {}
    void release() override {}
    void log(LoggingLevel level, const char* text) override {
        file_ << logger_ << ' ' << level << ' ' << text << std::endl;
    }

private:
    std::ofstream& file_;
    std::string logger_; // a copy: the name is only valid during createChannel
};

class MyBackend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char* logger) override {
        return &channels_.try_emplace(logger, file_, logger).first->second;
    }

private:
    std::ofstream file_{setting(pathProperty, defaultPath), std::ios::app};
    std::map<std::string, MyChannel> channels_;
};

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    static auto* const backend = new MyBackend; // never destroyed: loggers use it until exit
    return backend;
}
