#pragma once

#include "../Row.h"

/// The rows of this module: what each source beside this one has to offer.
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

/// These write to the crisis log, at its one place, and to a file beside it.
Rows crisisLogRows();

} // namespace benchmarks
