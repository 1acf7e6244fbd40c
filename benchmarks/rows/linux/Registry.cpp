#include "../Rows.h"

namespace benchmarks {

std::vector<Row> registryRows() {
    return {}; // Linux has no registry
}

} // namespace benchmarks
