#include "../Workloads.h"
#include "../baseline/Baseline.h"
#include "Delivery.h"
#include "Rows.h"

using namespace ZOL::Framework::GenericLogger;

namespace benchmarks {

namespace {

const Level level(LOG_LEVEL_DEFAULT);

void runFloor(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        keep(level.isActive(LOG_LEVEL_DEBUG));
    }
}

void runAsked(std::size_t n) {
    Logger* const logger = productLogger();
    for (std::size_t i = 0; i < n; ++i) {
        keep(logger->isLevelActive(LOG_LEVEL_DEBUG));
    }
}

void runLine(std::size_t n) {
    Logger* const logger = productLogger();
    const std::string& word = lineWord();
    for (std::size_t i = 0; i < n; ++i) {
        ZOL_LOG(logger, LOG_LEVEL_DEBUG)
            << lineStart << static_cast<int>(i) << ' ' << lineNumber << ' ' << word;
    }
}

constexpr Row rows[] = {
    {levelAsked, Role::Floor, floorName, runFloor},
    {levelAsked, Role::Product, productName, runAsked},
    {levelOffLine, Role::Floor, floorName, runFloor},
    {levelOffLine, Role::Product, productName, runLine, nullptr, nullptr,
     delivered<runLine, productCounter>},
};

} // namespace

Rows levelOffRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
