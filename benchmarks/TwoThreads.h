#pragma once

#include <cstddef>
#include <thread>

namespace benchmarks {

/// Does half of the work on a thread of its own and the other half here, at the same time.
template <void (*run)(std::size_t)>
void onTwoThreads(std::size_t n) {
    std::thread other(run, n / 2);
    run(n - n / 2);
    other.join();
}

} // namespace benchmarks
