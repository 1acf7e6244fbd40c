#include <charconv>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include <boost/thread/mutex.hpp>

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"

#include "../Subject.h"
#include "Rows.h"
#include "WallClock.h"

using ZOL::Framework::CrisisLogging::CrisisLogger;

namespace benchmarks {

namespace {

constexpr Workload crisisLine = {"crisis log, a line of 40", 100};

std::FILE* floorFile() {
    static std::FILE* const file = [] {
        std::FILE* const opened = std::fopen(crisisFloorPath, "a+");
        if (opened == nullptr) {
            throw std::runtime_error(std::string("cannot open ") + crisisFloorPath);
        }
        return opened;
    }();
    return file;
}

void write(const char* line, std::size_t size) {
    std::fwrite(line, 1, size, floorFile());
    std::fflush(floorFile());
}

void runWrite(std::size_t n) {
    const std::string line = std::string("12:34:56.789 - ") + fortyCharacters + "\n";
    for (std::size_t i = 0; i < n; ++i) {
        write(line.data(), line.size());
    }
}

/// Writes the number with at least that many digits.
char* padded(char* at, int number, int digits) {
    for (int limit = 10; digits > 1; --digits, limit *= 10) {
        if (number < limit) {
            *at++ = '0';
        }
    }
    return std::to_chars(at, at + 10, number).ptr;
}

void runCompose(std::size_t n) {
    static boost::mutex lock;
    for (std::size_t i = 0; i < n; ++i) {
        const boost::mutex::scoped_lock locked(lock);
        char line[256];
        const WallClock now = readWallClock();
        char* at = padded(line, now.hour, 2);
        *at++ = ':';
        at = padded(at, now.minute, 1);
        *at++ = ':';
        at = padded(at, now.second, 1);
        *at++ = '.';
        at = padded(at, now.millisecond, 3);
        std::memcpy(at, " - ", 3);
        at += 3;
        const std::size_t length = std::strlen(fortyCharacters);
        std::memcpy(at, fortyCharacters, length);
        at += length;
        *at++ = '\n';
        write(line, static_cast<std::size_t>(at - line));
    }
}

void runProduct(std::size_t n) {
    CrisisLogger& logger = CrisisLogger::instance();
    for (std::size_t i = 0; i < n; ++i) {
        logger.log(fortyCharacters);
    }
}

} // namespace

std::vector<Row> crisisLogRows() {
    return {
        {crisisLine, Role::Floor, "floor: fwrite and fflush", runWrite},
        {crisisLine, Role::Reference, "the same with clock, lock and text", runCompose},
        {crisisLine, Role::Product, productName, runProduct},
    };
}

} // namespace benchmarks
