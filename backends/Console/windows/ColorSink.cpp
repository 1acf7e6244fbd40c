// Compiles the sink that Console uses on this platform.

#include <spdlog/sinks/wincolor_sink-inl.h>

template class spdlog::sinks::wincolor_sink<spdlog::details::console_nullmutex>;
template class spdlog::sinks::wincolor_stderr_sink<spdlog::details::console_nullmutex>;
