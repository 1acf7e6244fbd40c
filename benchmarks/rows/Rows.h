#pragma once

#include <vector>

#include "../Row.h"

/// The rows of the product, its floors and its references: one function for each source in this
/// folder.
namespace benchmarks {

inline constexpr const char* floorName = "floor";
inline constexpr const char* productName = "ZOL";

std::vector<Row> loggingRows();
std::vector<Row> statementRows();
std::vector<Row> propertyRows();
std::vector<Row> namedObjectRows();
std::vector<Row> counterRows();
std::vector<Row> randomNumberRows();
std::vector<Row> stringRows();
std::vector<Row> heapRows();
std::vector<Row> registryRows();

/// These write to the crisis log, which has one place on a machine, and to a file next to it.
std::vector<Row> crisisLogRows();

} // namespace benchmarks
