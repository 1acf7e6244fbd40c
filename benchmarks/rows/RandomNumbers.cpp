#include "ZOL/Framework/Framework.h"

#include "../baseline/Baseline.h"
#include "Rows.h"

using ZOL::Framework::Framework;

namespace benchmarks {

namespace {

constexpr Workload randomNumber = {"randomNumber", 10000};

void runFloor(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        keep(lockedRandom());
    }
}

void runProduct(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        keep(Framework::randomNumber());
    }
}

} // namespace

std::vector<Row> randomNumberRows() {
    return {
        {randomNumber, Role::Floor, floorName, runFloor},
        {randomNumber, Role::Product, productName, runProduct},
    };
}

} // namespace benchmarks
