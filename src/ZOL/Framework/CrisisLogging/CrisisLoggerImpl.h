#pragma once

#include <cstdio>

#include <boost/thread/mutex.hpp>

namespace ZOL::Framework::GenericLogger::detail {
class TextStream;
} // namespace ZOL::Framework::GenericLogger::detail

namespace ZOL::Framework::CrisisLogging {

/// The private block of the crisis logger.
class CrisisLoggerImpl {
public:
    CrisisLoggerImpl() = default;
    CrisisLoggerImpl(const CrisisLoggerImpl&) = delete;
    CrisisLoggerImpl& operator=(const CrisisLoggerImpl&) = delete;
    ~CrisisLoggerImpl();

    /// Throws FrameworkException if the file cannot be opened.
    void open();

    void log(const char* message);

private:
    /// Writes the local time of day, with minute and second unpadded.
    static void timestamp(GenericLogger::detail::TextStream& line);

    std::FILE* file_ = nullptr;
    boost::mutex mutex_; // held while time is read and line written: keeps lines in order
};

} // namespace ZOL::Framework::CrisisLogging
