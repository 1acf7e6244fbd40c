// A program that uses the crisis log before main.

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"

using ZOL::Framework::CrisisLogging::CrisisLogger;

namespace {

CrisisLogger* logEarly() {
    CrisisLogger& logger = CrisisLogger::instance();
    logger.log("before main");
    return &logger;
}

CrisisLogger* const early = logEarly();

} // namespace

int main() {
    CrisisLogger::instance().log("in main");
    return &CrisisLogger::instance() == early ? 0 : 1;
}
