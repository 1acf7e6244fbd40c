#include "Spdlog.h"

#if defined(SPDLOG_COMPILED_LIB)
#error "this is the peer without the library"
#endif

benchmarks::Rows benchmarkRows() {
    return benchmarks::rowsOfPeer<benchmarks::Spdlog>("spdlog header-only");
}
