#include <windows.h>

#include "live/CrashHandler.h"
#include "live/GuardedText.h"

namespace backendcheck {

namespace {

CheckRecord* crashRecord = nullptr;

LONG WINAPI onCrash(EXCEPTION_POINTERS* pointers) {
    const EXCEPTION_RECORD& record = *pointers->ExceptionRecord;
    if (record.ExceptionCode == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION)) {
        const auto* const address = reinterpret_cast<const void*>(record.ExceptionInformation[1]);
        if (const char* const fault = faultAt(address, record.ExceptionInformation[0] == 1)) {
            crashRecord->crashed(fault);
        }
    }
    TerminateProcess(GetCurrentProcess(), record.ExceptionCode);
    return EXCEPTION_EXECUTE_HANDLER;
}

/// Called first for every exception: for those that the loader would catch, and stack overflows.
LONG WINAPI onAnyException(EXCEPTION_POINTERS* pointers) {
    const DWORD code = pointers->ExceptionRecord->ExceptionCode;
    if (code == static_cast<DWORD>(EXCEPTION_STACK_OVERFLOW)) {
        crashRecord->crashed(stackOverflow);
        TerminateProcess(GetCurrentProcess(), code);
    }
    if (code == static_cast<DWORD>(EXCEPTION_ACCESS_VIOLATION) && crashRecord->isDone()) {
        return onCrash(pointers);
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

void installCrashHandlers(CheckRecord& record) {
    crashRecord = &record;
    SetUnhandledExceptionFilter(&onCrash);
    AddVectoredExceptionHandler(1, &onAnyException);
    ULONG room = 65536; // to handle an overflow in
    SetThreadStackGuarantee(&room);
}

} // namespace backendcheck
