#pragma once

#include "ZOL/Framework/Management/PropertyManager.h"

#include "Export.h"

namespace benchmarks {

/// A store that is a map behind the virtual operations and nothing else; the only one.
BENCHMARKS_FAR ZOL::Framework::Management::PropertyManager& bareProperties();

} // namespace benchmarks
