// Does one piece of work so many times: `Probe WORK TIMES`. What it costs is counted from outside,
// as the difference between two runs.

#include <array>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "ZOL/Framework/Framework.h"
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
    return "name " + std::to_string(number) + ", longer than what a string holds within itself";
}

WideString wideNameOf(int number) {
    const std::string name = nameOf(number);
    return {name.begin(), name.end()};
}

class CountingChannel final : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char* text) override { seen_ += text[0] != '\0' ? 1 : 0; }
    int seen() const { return seen_; }

private:
    int seen_ = 0;
};

class CountingBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return &channel_; }
    int seen() const { return channel_.seen(); }

private:
    CountingChannel channel_;
};

CountingBackend backend;

Logger* connectedLogger() {
    Logger::installBackend(&backend);
    return Logger::getLogger("logger");
}

void* makeObject() {
    static int object;
    return &object;
}

// Each answers how many of its pieces of work did what they are meant to.

int logTexts(int times) {
    Logger* const logger = connectedLogger();
    for (int i = 0; i < times; ++i) {
        logger->info("a text of forty characters, all of them.");
    }
    return backend.seen();
}

int logLines(int times) {
    Logger* const logger = connectedLogger();
    const std::string word = "twelve chars";
    for (int i = 0; i < times; ++i) {
        logger->info("a line of ") << 123456 << ' ' << 1234.5 << ' ' << word;
    }
    return backend.seen();
}

int askForALevelThatIsOff(int times) {
    Logger* const logger = connectedLogger();
    int off = 0;
    for (int i = 0; i < times; ++i) {
        off += logger->isLevelActive(LOG_LEVEL_DEBUG) ? 0 : 1;
    }
    return off;
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
        MemoryManager::registerObject(nameOf(i).c_str(), makeObject);
    }
    const std::string name = nameOf(names / 3);
    int found = 0;
    for (int i = 0; i < times; ++i) {
        found += MemoryManager::findObject(name.c_str()) == makeObject() ? 1 : 0;
    }
    return found;
}

struct Work {
    const char* name;
    int (*run)(int times);
};

constexpr std::array<Work, 6> works{{{"text", logTexts},
                                     {"line", logLines},
                                     {"level-off", askForALevelThatIsOff},
                                     {"known-logger", findLoggers},
                                     {"known-property", findProperties},
                                     {"known-object", findObjects}}};

} // namespace

int main(int argc, char** argv) {
    if (argc == 3) {
        const int times = std::atoi(argv[2]);
        for (const Work& work : works) {
            if (std::strcmp(work.name, argv[1]) == 0) {
                return work.run(times) == times ? EXIT_SUCCESS : EXIT_FAILURE;
            }
        }
    }
    std::cerr << "usage: Probe WORK TIMES, with one of these as WORK:";
    for (const Work& work : works) {
        std::cerr << ' ' << work.name;
    }
    std::cerr << '\n';
    return EXIT_FAILURE;
}
