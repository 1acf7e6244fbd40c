#pragma once

#include <string>
#include <vector>

#include "Row.h"

namespace benchmarks {

/// The rows of this program and of all peers beside it whose work's name the expression matches.
/// Those of the crisis log, which has but one place on a machine, are among them only if the
/// environment has a ZOL_BENCHMARK_CRISIS_LOG.
///
/// Before it returns, every row that delivers text has done so once: throws std::runtime_error if
/// the subjects of a work do not deliver the same, for then there is nothing to compare.
std::vector<Row> allRows(const std::string& expression);

} // namespace benchmarks
