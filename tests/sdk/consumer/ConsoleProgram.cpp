#include <cstdio>
#include <exception>

#include "ZOL/Framework/GenericLogger/Logger.h"

using namespace ZOL::Framework::GenericLogger;

int main() {
    try {
        Logger::getLogger("consumer")->error("from the program");
        Logger::installBackend("Console");
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
    return 0;
}
