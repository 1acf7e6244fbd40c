#pragma once

#include <string>
#include <vector>

#include "Row.h"

namespace benchmarks {

/// Those of all parts whose work's name the expression matches.
std::vector<Row> wantedRows(const std::vector<Rows>& parts, const std::string& expression);

} // namespace benchmarks
