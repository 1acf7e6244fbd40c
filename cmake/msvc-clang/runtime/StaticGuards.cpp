#include <limits.h>

#include <windows.h>

// The initialization of a function's static objects, once, also when threads race for it.

namespace {

SRWLOCK lock = SRWLOCK_INIT;
CONDITION_VARIABLE changed = CONDITION_VARIABLE_INIT;
constexpr int uninitialized = 0;
constexpr int beingInitialized = -1;

void finish(int* guard, int value) {
    *guard = value;
    ReleaseSRWLockExclusive(&lock);
    WakeAllConditionVariable(&changed);
}

} // namespace

extern "C" {

int _Init_global_epoch = INT_MIN;
__declspec(thread) int _Init_thread_epoch = INT_MIN;

void __cdecl _Init_thread_header(int* guard) {
    AcquireSRWLockExclusive(&lock);
    while (*guard == beingInitialized) {
        SleepConditionVariableSRW(&changed, &lock, INFINITE, 0);
    }
    if (*guard == uninitialized) {
        *guard = beingInitialized;
    } else {
        _Init_thread_epoch = _Init_global_epoch;
    }
    ReleaseSRWLockExclusive(&lock);
}

void __cdecl _Init_thread_footer(int* guard) {
    AcquireSRWLockExclusive(&lock);
    ++_Init_global_epoch;
    _Init_thread_epoch = _Init_global_epoch;
    finish(guard, _Init_global_epoch);
}

void __cdecl _Init_thread_abort(int* guard) {
    AcquireSRWLockExclusive(&lock);
    finish(guard, uninitialized);
}

} // extern "C"
