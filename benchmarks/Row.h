#pragma once

#include <cstddef>

#include "ByteCounter.h"

namespace benchmarks {

/// An operation that several subjects perform, each in its own way.
struct Workload {
    const char* name;  ///< Without '|' and '/', which separate it from the rest of a row's name.
    std::size_t batch; ///< Number of operations between two readings of the clock.
};

enum class Role {
    Floor,     ///< The least that any implementation has to do, written by hand.
    Reference, ///< Another hand-written way, for comparison.
    Product,
    Peer
};

/// One subject performing one workload. A row may come from another module; everything it points to
/// stays valid until the process ends.
struct Row {
    Workload workload;
    Role role;
    const char* subject;

    /// Performs the operation n times.
    void (*run)(std::size_t n);

    /// Called before and after each measurement. May be null.
    void (*prepare)() = nullptr;
    void (*finish)() = nullptr;

    /// Null, or performs the operation n times and returns how many bytes arrived in the sink. All
    /// subjects of a workload must deliver the same number.
    std::size_t (*deliver)(std::size_t n) = nullptr;

    /// Called before each batch while the clock is stopped. May be null.
    void (*prepareBatch)() = nullptr;
};

/// A row's deliver function.
template <void (*run)(std::size_t), ByteCounter& (*counter)()>
std::size_t delivered(std::size_t n) {
    ByteCounter& sink = counter();
    sink.bytes = 0;
    sink.isCounting = true;
    run(n);
    sink.isCounting = false;
    return sink.bytes;
}

/// Keeps the compiler from removing the computation of the value.
template <typename Value>
void keep(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

} // namespace benchmarks
