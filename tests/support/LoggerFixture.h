#pragma once

#include <string>

#include <gtest/gtest.h>

#include "RecordingBackend.h"

#include "ZOL/Framework/GenericLogger/Logger.h"

namespace support {

/// A test with loggers of its own names and with back ends that leave the process-wide list at its
/// end, so that tests also run one after the other in one process.
class LoggerFixture : public testing::Test {
protected:
    using Logger = ZOL::Framework::GenericLogger::Logger;

    LoggerFixture();
    ~LoggerFixture() override;

    /// "<prefix of this test>.<name>": ordered among one another by name.
    std::string named(const std::string& name) const { return prefix_ + name; }
    Logger* logger(const std::string& name = "logger") const;

    /// A back end that serves this test's loggers alone, writing to journal; not installed.
    RecordingBackend& makeBackend(const std::string& name);

    /// makeBackend and install.
    RecordingBackend& installBackend(const std::string& name);
    void install(RecordingBackend& backend);

    /// The line that the journal shows for a message.
    std::string line(const std::string& backend, int level, const std::string& text,
                     const std::string& logger = "logger") const;

    /// The names, of this test's loggers, that the back end was asked for.
    std::vector<std::string> asked(const RecordingBackend& backend) const;

    Journal& journal;

private:
    std::string prefix_;
    std::vector<RecordingBackend*> backends_;
};

} // namespace support
