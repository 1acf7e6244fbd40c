#include "Number.h"

namespace benchmarks {

int Number::next() {
    return value_++;
}

} // namespace benchmarks
