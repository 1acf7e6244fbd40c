#include "Level.h"

namespace benchmarks {

bool Level::isActive(int level) const {
    return level >= *least_;
}

} // namespace benchmarks
