#include "ZOL/Framework/GenericLogger/Logger.h"

using namespace ZOL::Framework::GenericLogger;

int main() {
    Logger* const logger = Logger::getLogger("orders"); // the same one in every module
    logger->warning() << "stock is low: " << 3;         // waits: there is no back end yet
    Logger::installBackend("Console");                  // the line comes out here
    logger->minLogLevel(LOG_LEVEL_INFO);                // for ZOL_LOG; ERROR in a new logger
    ZOL_LOG(logger, LOG_LEVEL_INFO) << "12 delivered";  // built only if the level is active
}
