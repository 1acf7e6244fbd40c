#pragma once

#include <vector>

#include "Row.h"

namespace benchmarks {

/// Writes a line for each row to standard output, in the order that a table is to have: work, role
/// and subject, with tabs between.
void writeRows(const std::vector<Row>& rows);

/// Writes the line of one repetition: the same three, repetition, nanoseconds per operation.
void writeResult(const Row& row, long repetition, double nanoseconds);

} // namespace benchmarks
