#include "../Texts.h"
#include "../TwoThreads.h"
#include "../Works.h"
#include "FloorLine.h"
#include "ProductLogger.h"
#include "RowFiles.h"

namespace benchmarks {

namespace {

void runFloor(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        deliverUnderLock(fortyCharacters);
    }
}

void runProduct(std::size_t n) {
    auto* const logger = productLogger();
    for (std::size_t i = 0; i < n; ++i) {
        logger->info(fortyCharacters);
    }
}

constexpr auto runFloorTwice = onTwoThreads<runFloor>;
constexpr auto runProductTwice = onTwoThreads<runProduct>;

constexpr Row rows[] = {
    {plainText, Role::Floor, floorName, runFloor, nullptr, nullptr,
     delivered<runFloor, floorFarSide>},
    {plainText, Role::Product, productName, runProduct, nullptr, nullptr,
     delivered<runProduct, productFarSide>},
    {plainTextTwoThreads, Role::Floor, floorName, runFloorTwice, nullptr, nullptr,
     delivered<runFloorTwice, floorFarSide>},
    {plainTextTwoThreads, Role::Product, productName, runProductTwice, nullptr, nullptr,
     delivered<runProductTwice, productFarSide>},
};

} // namespace

Rows plainTextRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
