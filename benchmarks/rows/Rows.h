#pragma once

#include "../Row.h"

/// The rows of the product, its floors and its references: one function for each source in this
/// folder.
namespace benchmarks {

inline constexpr const char* floorName = "floor";
inline constexpr const char* productName = "ZOL";

Rows plainTextRows();
Rows typedLineRows();
Rows levelOffRows();
Rows loggerByNameRows();
Rows propertyRows();
Rows namedObjectRows();
Rows counterRows();
Rows randomNumberRows();
Rows stringRows();
Rows heapRows();
Rows registryRows();

/// These write to the crisis log, which has one place on a machine, and to a file next to it.
Rows crisisLogRows();

} // namespace benchmarks
