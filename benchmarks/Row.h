#pragma once

#include <cstddef>

#include "far/FarSide.h"

namespace benchmarks {

/// Something that several subjects do, in a different way each.
struct Work {
    const char* name;
    std::size_t batch; ///< How many times to do it between two looks at the clock.
};

enum class Role {
    Floor,     ///< The least that any implementation has to do, written out by hand.
    Reference, ///< Another way by hand, to compare with.
    Product,
    Peer
};

/// One subject doing one work. A row may come from another module; all that it points to stays
/// there as long as the process lives.
struct Row {
    Work work;
    Role role;
    const char* subject;

    /// Does the work n times.
    void (*run)(std::size_t n);

    /// Before and after each measurement, if there is something to set up.
    void (*prepare)() = nullptr;
    void (*finish)() = nullptr;

    /// For works that deliver text: does the work n times and returns how many bytes came out at
    /// the far side, which must be the same for all subjects.
    std::size_t (*deliver)(std::size_t n) = nullptr;
};

/// Rows as they cross the boundary of a module.
struct Rows {
    const Row* first;
    std::size_t count;
};

template <std::size_t count>
Rows rowsOf(const Row (&rows)[count]) {
    return {rows, count};
}

/// What a row's deliver is, for a far side that has to be told to count.
template <void (*run)(std::size_t), FarSide& (*farSide)()>
std::size_t delivered(std::size_t n) {
    FarSide& side = farSide();
    side.bytes = 0;
    side.isCounted = true;
    run(n);
    side.isCounted = false;
    return side.bytes;
}

/// The same for a far side that tells how many bytes it has taken so far.
template <void (*run)(std::size_t), std::size_t (*taken)()>
std::size_t delivered(std::size_t n) {
    const std::size_t before = taken();
    run(n);
    return taken() - before;
}

/// Has the compiler believe that the value is used.
template <typename Value>
void keep(const Value& value) {
    asm volatile("" : : "g"(&value) : "memory");
}

} // namespace benchmarks
