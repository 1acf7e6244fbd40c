#include "ZOL/Framework/CrisisLogging/CrisisLoggerImpl.h"

#include <cstddef>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Platform/Clock.h"
#include "ZOL/Platform/CrisisLogFile.h"

namespace ZOL::Framework::CrisisLogging {

namespace {

std::string padded(int number, std::size_t width) {
    std::string digits = std::to_string(number);
    if (digits.size() < width) {
        digits.insert(0, width - digits.size(), '0');
    }
    return digits;
}

} // namespace

CrisisLoggerImpl::~CrisisLoggerImpl() {
    if (file_ != nullptr) {
        std::fclose(file_);
    }
}

void CrisisLoggerImpl::open() {
    file_ = Platform::openCrisisLogFile();
    if (file_ == nullptr) {
        const std::string message =
            std::string("Error opening log file: '") + Platform::crisisLogPath + "'";
        throw Exceptions::FrameworkException(message.c_str());
    }
}

void CrisisLoggerImpl::log(const char* message) {
    const boost::mutex::scoped_lock lock(mutex_);

    // Whole before anything is written: when memory is short, not half a line goes out.
    std::string line = timestamp();
    line.append(" - ").append(message).append("\n");

    // Nobody is left to be told of a failure.
    (void)std::fwrite(line.data(), 1, line.size(), file_);
    (void)std::fflush(file_);
}

std::string CrisisLoggerImpl::timestamp() {
    const Platform::LocalTime now = Platform::localTime();

    return padded(now.hour, 2) + ":" + std::to_string(now.minute) + ":" +
           std::to_string(now.second) + "." + padded(now.millisecond, 3);
}

} // namespace ZOL::Framework::CrisisLogging
