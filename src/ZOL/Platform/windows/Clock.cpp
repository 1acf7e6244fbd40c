#include "ZOL/Platform/Clock.h"

#include <sys/timeb.h>
#include <windows.h>

namespace ZOL::Platform {

LocalTime localTime() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    return {now.wHour, now.wMinute, now.wSecond, now.wMilliseconds};
}

unsigned int currentMillisecond() {
    struct __timeb64 now = {};
    _ftime64_s(&now);
    return now.millitm;
}

} // namespace ZOL::Platform
