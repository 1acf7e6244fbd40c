#pragma once

#include "Export.h"

namespace benchmarks {

/// A number that goes up.
class Number {
public:
    BENCHMARKS_FAR int next();

private:
    int value_ = 0;
};

} // namespace benchmarks
