#include "ZOL/Framework/CrisisLogging/CrisisLoggerImpl.h"

#include <iomanip>
#include <ios>
#include <sstream>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Platform/Clock.h"
#include "ZOL/Platform/CrisisLogFile.h"

namespace ZOL::Framework::CrisisLogging {

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

    std::ostringstream stream;
    stream.exceptions(std::ios_base::badbit); // or half a line would go out when memory is short
    stream << timestamp() << " - " << message << "\n";
    const std::string line = stream.str();

    // Nobody is left to be told of a failure.
    (void)std::fwrite(line.data(), 1, line.size(), file_);
    (void)std::fflush(file_);
}

std::string CrisisLoggerImpl::timestamp() {
    const Platform::LocalTime now = Platform::localTime();

    std::ostringstream stream;
    stream.exceptions(std::ios_base::badbit);
    stream.fill('0');
    // A width holds for one insertion: minute and second have none.
    stream << std::setw(2) << now.hour << ":" << now.minute << ":" << now.second << "."
           << std::setw(3) << now.millisecond;
    return stream.str();
}

} // namespace ZOL::Framework::CrisisLogging
