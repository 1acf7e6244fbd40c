#include "reader/CrisisNote.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"

using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;

namespace Demo {

std::string noteInCrisisLog(const std::string& message) {
    try {
        CrisisLogger::instance().log(message.c_str());
        return "noted in the crisis log";
    } catch (const FrameworkException& exception) {
        return std::string("not noted in the crisis log: ") + exception.message();
    }
}

} // namespace Demo
