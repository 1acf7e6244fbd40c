#include "Spdlog.h"

#if !defined(SPDLOG_COMPILED_LIB)
#error "this is the peer with the library"
#endif

benchmarks::Rows benchmarkRows() {
    return benchmarks::rowsOfPeer<benchmarks::Spdlog>("spdlog library");
}
