#pragma once

#include <cstdint>

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::Counting {

class CounterReaper;

/// A named number of the process: every module that asks for a name counts on the same object.
///
/// Nothing here locks and nothing is atomic. Threads that share counters take turns by a lock of
/// their own, for counter as much as for next and reset.
class Counter {
public:
    Counter(const Counter&) = delete;

    /// The counter of that name, made at 0 if it is new. It stays at its address until the module
    /// unloads, so the reference may be kept to spare the search. Throws std::bad_alloc. Names are
    /// case-sensitive, and the empty name is a name like any other; null is not tested for.
    ZOL_FRAMEWORK_API static Counter& counter(const char* name);

    /// The present value, which then goes up by one; behind 2147483647 comes -2147483648.
    ZOL_FRAMEWORK_API int next();

    /// Back to 0.
    ZOL_FRAMEWORK_API void reset();

    /// Takes over the present value of the other and links nothing.
    ZOL_FRAMEWORK_API Counter& operator=(const Counter& other);

private:
    friend class CounterReaper;

    ZOL_FRAMEWORK_API Counter();
    ~Counter() = default;

    std::int32_t value_;
};

static_assert(sizeof(Counter) == sizeof(std::int32_t), "modules know it as one number");

} // namespace ZOL::Framework::Counting
