#pragma once

#include <cstdint>

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::Counting {

class CounterReaper;

/// A named counter of the process: all modules that ask for a name get the same object.
///
/// No operation takes a lock or is atomic. Threads that share counters must use a lock of their
/// own, for counter as well as for next and reset.
class Counter {
public:
    Counter(const Counter&) = delete;

    /// Returns the counter with this name; a new one starts at 0. The reference is valid until the
    /// module unloads, so callers may keep it to avoid the search. Names are case-sensitive, and
    /// the empty name is valid. Passing null is undefined. Throws std::bad_alloc.
    ZOL_FRAMEWORK_API static Counter& counter(const char* name);

    /// Returns the current value, then increments it. 2147483647 is followed by -2147483648.
    ZOL_FRAMEWORK_API int next();

    /// Sets the value to 0.
    ZOL_FRAMEWORK_API void reset();

    /// Copies the current value. The two counters stay independent.
    ZOL_FRAMEWORK_API Counter& operator=(const Counter& other);

private:
    friend class CounterReaper;

    ZOL_FRAMEWORK_API Counter();
    ~Counter() = default;

    std::int32_t value_;
};

static_assert(sizeof(Counter) == sizeof(std::int32_t), "the size is part of the binary contract");

} // namespace ZOL::Framework::Counting
