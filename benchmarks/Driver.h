#pragma once

#include <vector>

#include "Row.h"

namespace benchmarks {

/// Defined by each program: calls measure, once or more often. The main function calls it, and
/// writes
/// {"complete": true} after the last document.
void measureAll();

/// Checks that all subjects of a workload deliver the same number of bytes, and throws
/// std::runtime_error if not. Then measures the rows with Google Benchmark, whose flags are those
/// of the program, and writes a JSON document to standard output. A row's benchmark is named
/// "workload | subject" and labelled with its role.
void measure(const std::vector<Row>& rows);

} // namespace benchmarks
