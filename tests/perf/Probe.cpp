// `Probe WORKLOAD TIMES` performs one operation that many times. CountInstructions.cmake counts the
// instructions of two runs and takes the difference.

#include <array>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/LogStatements.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/Management/MemoryManager.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using ZOL::Framework::Framework;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Management::WideString;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace {

constexpr int names = 1000;

std::string nameOf(int number) {
    return "name " + std::to_string(number) + ", longer than the small buffer of a std::string";
}

WideString wideNameOf(int number) {
    const std::string name = nameOf(number);
    return {name.begin(), name.end()};
}

class CountingChannel final : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char* text) override { received_ += text[0] != '\0' ? 1 : 0; }
    int received() const { return received_; }

private:
    int received_ = 0;
};

class CountingBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return &channel_; }
    int received() const { return channel_.received(); }

private:
    CountingChannel channel_;
};

CountingBackend backend;

Logger* connectedLogger() {
    Logger::installBackend(&backend);
    return Logger::getLogger("logger");
}

void* createObject() {
    static int object;
    return &object;
}

// Each returns how many of its operations had the expected result.

int logTexts(int times) {
    Logger* const logger = connectedLogger();
    for (int i = 0; i < times; ++i) {
        logger->info("a text of forty characters, all of them.");
    }
    return backend.received();
}

int logLines(int times) {
    Logger* const logger = connectedLogger();
    const std::string word = "twelve chars";
    for (int i = 0; i < times; ++i) {
        logger->info("a line of ") << 123456 << ' ' << 1234.5 << ' ' << word;
    }
    return backend.received();
}

int checkInactiveLevel(int times) {
    Logger* const logger = connectedLogger();
    int off = 0;
    for (int i = 0; i < times; ++i) {
        off += logger->isLevelActive(LOG_LEVEL_DEBUG) ? 0 : 1;
    }
    return off;
}

int skipInactiveStatements(int times) {
    Logger* const logger = connectedLogger();
    for (int i = 0; i < times; ++i) {
        ZOL_LOG(logger, LOG_LEVEL_DEBUG) << i;
    }
    return backend.received() == 0 ? times : 0;
}

int skipUsedUpStatements(int times) {
    Logger* const logger = connectedLogger();
    for (int i = 0; i < times; ++i) {
        ZOL_LOG_ONCE(logger, LOG_LEVEL_ERROR) << i;
    }
    return backend.received() == 1 ? times : 0;
}

int skipAllButEveryNth(int times) {
    Logger* const logger = connectedLogger();
    for (int i = 0; i < times; ++i) {
        ZOL_LOG_EVERY_N(logger, LOG_LEVEL_ERROR, 1'000'000) << i;
    }
    return backend.received() == 1 ? times : 0;
}

int findLoggers(int times) {
    for (int i = 0; i < names; ++i) {
        Logger::getLogger(nameOf(i).c_str());
    }
    const std::string name = nameOf(names / 3);
    Logger* const logger = Logger::getLogger(name.c_str());
    int found = 0;
    for (int i = 0; i < times; ++i) {
        found += Logger::getLogger(name.c_str()) == logger ? 1 : 0;
    }
    return found;
}

int findProperties(int times) {
    auto& store = *Framework::propertyManager();
    for (int i = 0; i < names; ++i) {
        store.setProperty(wideNameOf(i), wideNameOf(i));
    }
    const WideString name = wideNameOf(names / 3);
    int found = 0;
    for (int i = 0; i < times; ++i) {
        found += store.hasProperty(name) && store.readProperty(name) == name ? 1 : 0;
    }
    return found;
}

int findObjects(int times) {
    for (int i = 0; i < names; ++i) {
        MemoryManager::registerObject(nameOf(i).c_str(), createObject);
    }
    const std::string name = nameOf(names / 3);
    int found = 0;
    for (int i = 0; i < times; ++i) {
        found += MemoryManager::findObject(name.c_str()) == createObject() ? 1 : 0;
    }
    return found;
}

struct Workload {
    const char* name;
    int (*run)(int times);
};

constexpr std::array<Workload, 9> workloads{{{"text", logTexts},
                                             {"line", logLines},
                                             {"level-off", checkInactiveLevel},
                                             {"statement-off", skipInactiveStatements},
                                             {"once", skipUsedUpStatements},
                                             {"every-nth", skipAllButEveryNth},
                                             {"known-logger", findLoggers},
                                             {"known-property", findProperties},
                                             {"known-object", findObjects}}};

} // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        const int times = std::atoi(argv[2]);
        for (const Workload& workload : workloads) {
            if (std::strcmp(workload.name, argv[1]) == 0) {
                return workload.run(times) == times ? EXIT_SUCCESS : EXIT_FAILURE;
            }
        }
    }
    std::cerr << "usage: Probe WORKLOAD TIMES, with one of these as WORKLOAD:";
    for (const Workload& workload : workloads) {
        std::cerr << ' ' << workload.name;
    }
    std::cerr << '\n';
    return EXIT_FAILURE;
}
