#include "Baseline.h"

namespace benchmarks {

bool Level::isActive(int level) const {
    return level >= *minimum_;
}

int PlainCounter::next() {
    return value_++;
}

} // namespace benchmarks
