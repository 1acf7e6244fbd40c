#include "ZOL/Framework/Counting/Counter.h"

#include "../baseline/Baseline.h"
#include "Rows.h"

using ZOL::Framework::Counting::Counter;

namespace benchmarks {

namespace {

constexpr Workload next = {"Counter::next", 10000};

void runFloor(std::size_t n) {
    static PlainCounter counter;
    for (std::size_t i = 0; i < n; ++i) {
        keep(counter.next());
    }
}

void runProduct(std::size_t n) {
    static Counter& counter = Counter::counter("benchmarks");
    for (std::size_t i = 0; i < n; ++i) {
        keep(counter.next());
    }
}

} // namespace

std::vector<Row> counterRows() {
    return {
        {next, Role::Floor, floorName, runFloor},
        {next, Role::Product, productName, runProduct},
    };
}

} // namespace benchmarks
