#include <charconv>
#include <cstring>
#include <sstream>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/MemoryManager.h"

#include "../Subject.h"
#include "../baseline/Baseline.h"
#include "Delivery.h"
#include "Rows.h"

using namespace ZOL::Framework::GenericLogger;
namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

namespace {

constexpr int digits = 6; // what a stream writes of a double

const Level minimumLevel(LOG_LEVEL_DEFAULT);

struct Floor {
    const std::string& word = lineWord();

    void logText() { deliverUnderLock(fortyCharacters); }
    void logLine(int number) {
        static char line[256];
        char* const end = line + sizeof(line);
        constexpr std::size_t startLength = sizeof(lineStart) - 1;
        std::memcpy(line, lineStart, startLength);
        char* at = std::to_chars(line + startLength, end, number).ptr;
        *at++ = ' ';
        at = std::to_chars(at, end, lineNumber, std::chars_format::general, digits).ptr;
        *at++ = ' ';
        std::memcpy(at, word.c_str(), word.size() + 1);
        deliverUnderLock(line);
    }
    bool isDebugActive() { return minimumLevel.isActive(LOG_LEVEL_DEBUG); }
    void logDebugLine(int) { keep(minimumLevel.isActive(LOG_LEVEL_DEBUG)); }

    static void prepareNames() {
        static bool inserted = false;
        if (!inserted) {
            forAllNames([](const std::string& name) { NameTable::insert(name.c_str()); });
            inserted = true;
        }
    }
    void* find(const std::string& name) { return NameTable::findInMap(name.c_str()); }

    static ByteCounter& counter() { return sink().counter(); }
};

struct FreshStream : Floor {
    void logLine(int number) {
        std::ostringstream line;
        line << lineStart << number << ' ' << lineNumber << ' ' << word;
        deliverUnderLock(line.str().c_str());
    }
};

struct HashTable : Floor {
    void* find(const std::string& name) { return NameTable::findInHashTable(name.c_str()); }
};

/// The first call installs the discarding back end.
Logger* productLogger() {
    static Logger* const logger = [] {
        Logger::installBackend("BenchmarkDiscard");
        return Logger::getLogger("benchmarks");
    }();
    return logger;
}

struct Product {
    Logger* const logger = productLogger();
    const std::string& word = lineWord();

    void logText() { logger->info(fortyCharacters); }
    void logLine(int number) {
        logger->info(lineStart) << number << ' ' << lineNumber << ' ' << word;
    }
    bool isDebugActive() { return logger->isLevelActive(LOG_LEVEL_DEBUG); }
    void logDebugLine(int number) {
        ZOL_LOG(logger, LOG_LEVEL_DEBUG) << lineStart << number << ' ' << lineNumber << ' ' << word;
    }

    static void prepareNames() {
        productLogger();
        forAllNames([](const std::string& name) { Logger::getLogger(name.c_str()); });
    }
    Logger* find(const std::string& name) { return Logger::getLogger(name.c_str()); }

    static ByteCounter& counter() {
        productLogger();
        return *static_cast<ByteCounter*>(MemoryManager::findObject(discardCounterName));
    }
};

} // namespace

std::vector<Row> loggingRows() {
    std::vector<Row> rows = SubjectRows<Floor>{Role::Floor, floorName}.all();
    rows.push_back(SubjectRows<FreshStream>{Role::Reference, "a fresh std::ostringstream"}.line());
    const SubjectRows<HashTable> hashTable = {Role::Reference, "a std::unordered_map"};
    rows.push_back(hashTable.shortName());
    rows.push_back(hashTable.longName());
    const std::vector<Row> product = SubjectRows<Product>{Role::Product, productName}.all();
    rows.insert(rows.end(), product.begin(), product.end());
    return rows;
}

} // namespace benchmarks
