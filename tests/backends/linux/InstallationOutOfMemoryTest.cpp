// createBackend and createChannel of the ready-made back ends with failing allocations. The
// program's operator new replaces that of the plug-ins.

#include "OutOfMemory.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include "FreshFolder.h"
#include "Property.h"
#include "RecordingSink.h"
#include "SinkBackend.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;
using support::longText;

namespace {

constexpr const char* backends[] = {"Console", "DailyFile",    "DebugOutput",
                                    "Network", "RotatingFile", "SystemLog"};

using CreateBackend = LoggerBackend*();

CreateBackend* entryPointOf(const char* backend) {
    // Never destroyed: the plug-ins stay loaded.
    static auto& holders = *new std::vector<std::unique_ptr<ZOL::Gadgets::DLL::DLLHolder>>;
    holders.push_back(std::make_unique<ZOL::Gadgets::DLL::DLLHolder>(backend, ""));
    return holders.back()->resolve<CreateBackend>("createBackend");
}

/// Settings of each type, longer than the small-string buffer, some of them invalid.
void setProperties(const std::string& backend, const std::string& text) {
    setProperty(backend + ".levels", "orders.of.the.shop.in.the.north=ERROR;" + text);
    setProperty(backend + ".pattern", "%v " + text);
    for (const char* name : {"path", "source", "host"}) {
        setProperty(backend + "." + name, "text-" + std::to_string(text.size()));
    }
    for (const char* name : {"size", "count", "hour", "port", "colour", "facility", "protocol"}) {
        setProperty(backend + "." + name, text);
    }
}

class InstallationOutOfMemory : public support::OutOfMemory {
protected:
    /// The number of attempts until no allocation fails. No exception may leave the operation.
    std::size_t attempts(const Action& operation, const Action& afterEach) const {
        for (std::size_t n = 1;; ++n) {
            const Outcome outcome = attempt(n, operation);
            EXPECT_FALSE(outcome.threwBadAlloc) << "at allocation " << n;
            SCOPED_TRACE("with allocation " + std::to_string(n));
            afterEach();
            if (!outcome.failed || testing::Test::HasFatalFailure()) {
                return n;
            }
        }
    }
};
ZOL_INSTANTIATE_OUT_OF_MEMORY(InstallationOutOfMemory);

TEST_P(InstallationOutOfMemory, CreateBackendReturnsNullOrABackEndAndSucceedsWithTheNextCall) {
    inFreshFolder([this] {
        testing::internal::CaptureStderr();
        for (const char* name : backends) {
            SCOPED_TRACE(name);
            setProperties(name, longText);
            CreateBackend* const createBackend = entryPointOf(name);
            LoggerBackend* backend = nullptr;
            bool wasNull = false;
            std::size_t failures = 0;
            const std::size_t count = attempts([&] { backend = createBackend(); },
                                               [&] {
                                                   wasNull = wasNull || backend == nullptr;
                                                   failures += backend == nullptr ? 1U : 0U;
                                               });
            EXPECT_TRUE(wasNull);
            EXPECT_GE(failures, 10U) << "each setting needs memory";
            EXPECT_LE(failures, count);
            ASSERT_NE(backend, nullptr);
            EXPECT_EQ(createBackend(), backend);
            EXPECT_NE(backend->createChannel("orders"), nullptr);
        }
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_EQ(report.find("Console: there is no memory for the settings\n") !=
                      std::string::npos,
                  GetParam() == support::FailingAllocator::Mode::Once)
            << "a report needs memory too";
    });
}

TEST_P(InstallationOutOfMemory, CreateBackendReturnsTheSameBackEndIfItCannotReadTheSettingsAnew) {
    inFreshFolder([this] {
        testing::internal::CaptureStderr();
        for (const char* name : backends) {
            SCOPED_TRACE(name);
            CreateBackend* const createBackend = entryPointOf(name);
            LoggerBackend* const backend = createBackend();
            ASSERT_NE(backend, nullptr);
            LoggingChannel* const channel = backend->createChannel("orders");
            setProperties(name, longText);
            const std::size_t count =
                attempts([&] { EXPECT_EQ(createBackend(), backend); },
                         [&] { EXPECT_EQ(backend->createChannel("orders"), channel); });
            EXPECT_GE(count, 10U);
        }
        testing::internal::GetCapturedStderr();
    });
}

TEST_P(InstallationOutOfMemory, CreateChannelReturnsNullOrAChannelAndSucceedsWithTheNextCall) {
    inFreshFolder([this] {
        testing::internal::CaptureStderr();
        setProperty("RotatingFile.pattern", "%v");
        LoggerBackend* const backend = entryPointOf("RotatingFile")();
        ASSERT_NE(backend, nullptr);
        LoggingChannel* channel = nullptr;
        const std::string name = uniqueName();
        bool wasNull = false;
        attempts([&] { channel = backend->createChannel(name.c_str()); },
                 [&] { wasNull = wasNull || channel == nullptr; });
        EXPECT_TRUE(wasNull);
        ASSERT_NE(channel, nullptr);
        EXPECT_EQ(backend->createChannel(name.c_str()), channel);
        channel->log(LOG_LEVEL_INFO, "written");
        EXPECT_EQ(textOf("zol.log"), "INFO [" + name + "] written\n");
        testing::internal::GetCapturedStderr();
    });
}

void setPattern(const std::string& pattern) {
    setProperty("Console.pattern", pattern);
}

TEST_P(InstallationOutOfMemory, NewSettingsAreAppliedWithoutMemory) {
    inFreshFolder([] {
        std::vector<RecordedLine> lines;
        setPattern(longText);
        SinkBackend backend(Settings("Console"),
                            [&lines](const Settings&) { return recordingOptions(lines); });
        ASSERT_NE(backend.createChannel("orders"), nullptr);
        setPattern(std::string(longText) + " %v");
        backend.update(Settings("Console"));
        EXPECT_EQ(allocationsOf([&] { backend.createChannel("orders"); }), 0U);
    });
}

TEST_P(InstallationOutOfMemory, NewSettingsThatCannotBeReadLeaveThoseBeforeThem) {
    inFreshFolder([this] {
        std::vector<RecordedLine> lines;
        setPattern("1%v");
        SinkBackend backend(Settings("Console"),
                            [&lines](const Settings&) { return recordingOptions(lines); });
        setPattern("2%v");
        backend.update(Settings("Console"));
        setPattern("3%v");
        EXPECT_TRUE(attempt(1, [&] { backend.update(Settings("Console")); }).threwBadAlloc);
        Settings third("Console");
        EXPECT_TRUE(attempt(1, [&] { backend.update(std::move(third)); }).threwBadAlloc);
        backend.createChannel("orders")->log(LOG_LEVEL_INFO, "x");
        ASSERT_EQ(lines.size(), 1U);
        EXPECT_EQ(lines[0].line, "2INFO [orders] x");
    });
}

} // namespace
