#include "../Rows.h"

namespace benchmarks {

Rows registryRows() {
    return {nullptr, 0}; // there is no registry here
}

} // namespace benchmarks
