#include <cstdio>
#include <exception>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using namespace ZOL::Framework::GenericLogger;

int main() {
    try {
        Logger* const logger = Logger::getLogger("consumer");
        logger->warning("from the program");
        Logger::installBackend("ConsumerBackend");
        Logger::installBackend("OtherConsumerBackend");
        const ZOL::Gadgets::DLL::DLLHolder module("ConsumerModule", "");
        module.resolve<void()>("logFromModule")();
        ZOL_LOG(logger, LOG_LEVEL_FATAL) << "x=" << 1;
        std::fflush(stdout);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
    return 0;
}
