#pragma once

#include <string>
#include <vector>

#include "shared/View.h"

namespace Demo {

struct Views {
    View byHost;
    View byReader;
    View byAuditor;
};

/// One thing as each of the three sees it.
struct Comparison {
    std::string name;
    std::string byHost;
    std::string byReader;
    std::string byAuditor;
    const char* verdict;
    bool passed; ///< the three may differ in nothing but in who made a shared object
};

struct ComparisonGroup {
    const char* title;
    std::vector<Comparison> rows;
};

std::vector<ComparisonGroup> compare(const Views& views);

} // namespace Demo
