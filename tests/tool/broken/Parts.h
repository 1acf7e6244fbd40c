#pragma once

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

// The parts of the broken plug-ins that have no fault.

using ZOL::Framework::GenericLogger::LoggerBackend;
using ZOL::Framework::GenericLogger::LoggingChannel;
using ZOL::Framework::GenericLogger::LoggingLevel;

class Channel : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char*) override {}
};

/// Has one channel for all loggers.
template <typename OneChannel>
class BackendWith : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return channel_; }

private:
    OneChannel* const channel_ = new OneChannel; // as long as the process
};

/// The same back end each time, for an entry point.
template <typename Backend>
LoggerBackend* theBackend() {
    static LoggerBackend* const backend = new Backend;
    return backend;
}
