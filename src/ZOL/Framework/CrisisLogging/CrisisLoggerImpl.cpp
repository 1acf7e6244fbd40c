#include "ZOL/Framework/CrisisLogging/CrisisLoggerImpl.h"

#include <string>
#include <string_view>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/detail/TextStream.h"
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

    // The line is complete before it is written: no partial line if memory runs out.
    GenericLogger::detail::TextStream line;
    timestamp(line);
    line << " - " << message << "\n";
    const std::string_view text = line.view();

    // There is no other place to report a failure to.
    (void)std::fwrite(text.data(), 1, text.size(), file_);
    (void)std::fflush(file_);
}

void CrisisLoggerImpl::timestamp(GenericLogger::detail::TextStream& line) {
    const Platform::LocalTime now = Platform::localTime();

    // Without manipulators: creating their std::ostream costs more than the rest of the line.
    line << (now.hour < 10 ? "0" : "") << now.hour << ":" << now.minute << ":" << now.second << "."
         << (now.millisecond < 100 ? "0" : "") << (now.millisecond < 10 ? "0" : "")
         << now.millisecond;
}

} // namespace ZOL::Framework::CrisisLogging
