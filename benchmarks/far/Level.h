#pragma once

#include "Export.h"

namespace benchmarks {

/// A minimum level behind a pointer.
class Level {
public:
    explicit Level(int least) : least_(new int(least)) {}
    Level(const Level&) = delete;
    Level& operator=(const Level&) = delete;
    ~Level() { delete least_; }

    BENCHMARKS_FAR bool isActive(int level) const;

private:
    int* least_;
};

} // namespace benchmarks
