#include "../Workloads.h"
#include "Delivery.h"
#include "Rows.h"

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
     delivered<runFloor, floorCounter>},
    {plainText, Role::Product, productName, runProduct, nullptr, nullptr,
     delivered<runProduct, productCounter>},
    {plainTextTwoThreads, Role::Floor, floorName, runFloorTwice, nullptr, nullptr,
     delivered<runFloorTwice, floorCounter>},
    {plainTextTwoThreads, Role::Product, productName, runProductTwice, nullptr, nullptr,
     delivered<runProductTwice, productCounter>},
};

} // namespace

Rows plainTextRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
