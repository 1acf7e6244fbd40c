#include <intrin.h>

// With every compiler but Visual C++ itself, Boost imports these from Windows. Windows for x64 has
// none: each function here stands behind the name of its import.

static long increment(volatile long* value) {
    return _InterlockedIncrement(value);
}

static long decrement(volatile long* value) {
    return _InterlockedDecrement(value);
}

static long exchange(volatile long* value, long next) {
    return _InterlockedExchange(value, next);
}

static long exchangeAdd(volatile long* value, long more) {
    return _InterlockedExchangeAdd(value, more);
}

static long compareExchange(volatile long* value, long next, long expected) {
    return _InterlockedCompareExchange(value, next, expected);
}

static void* exchangePointer(void* volatile* value, void* next) {
    return _InterlockedExchangePointer(value, next);
}

static void* compareExchangePointer(void* volatile* value, void* next, void* expected) {
    return _InterlockedCompareExchangePointer(value, next, expected);
}

extern "C" {

extern const auto __imp_InterlockedIncrement = increment;
extern const auto __imp_InterlockedDecrement = decrement;
extern const auto __imp_InterlockedExchange = exchange;
extern const auto __imp_InterlockedExchangeAdd = exchangeAdd;
extern const auto __imp_InterlockedCompareExchange = compareExchange;
extern const auto __imp_InterlockedExchangePointer = exchangePointer;
extern const auto __imp_InterlockedCompareExchangePointer = compareExchangePointer;

} // extern "C"
