#include <charconv>
#include <cstring>
#include <sstream>

#include "../Workloads.h"
#include "Delivery.h"
#include "Rows.h"

namespace benchmarks {

namespace {

constexpr int digits = 6; // what a stream writes of a double

void runFloor(std::size_t n) {
    static char line[256];
    char* const end = line + sizeof(line);
    constexpr std::size_t startLength = sizeof(lineStart) - 1;
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        std::memcpy(line, lineStart, startLength);
        char* at = std::to_chars(line + startLength, end, static_cast<int>(i)).ptr;
        *at++ = ' ';
        at = std::to_chars(at, end, lineNumber, std::chars_format::general, digits).ptr;
        *at++ = ' ';
        std::memcpy(at, word.c_str(), word.size() + 1);
        deliverUnderLock(line);
    }
}

void runStream(std::size_t n) {
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        std::ostringstream line;
        line << lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word;
        deliverUnderLock(line.str().c_str());
    }
}

void runProduct(std::size_t n) {
    auto* const logger = productLogger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        logger->info(lineStart) << static_cast<int>(i) << ' ' << lineNumber << ' ' << word;
    }
}

constexpr Row rows[] = {
    {typedLine, Role::Floor, floorName, runFloor, nullptr, nullptr,
     delivered<runFloor, floorCounter>},
    {typedLine, Role::Reference, "a fresh std::ostringstream", runStream, nullptr, nullptr,
     delivered<runStream, floorCounter>},
    {typedLine, Role::Product, productName, runProduct, nullptr, nullptr,
     delivered<runProduct, productCounter>},
};

} // namespace

Rows typedLineRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
