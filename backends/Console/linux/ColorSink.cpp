// Compiles the sink that Console uses on this platform.

#include <spdlog/sinks/ansicolor_sink-inl.h>

template class spdlog::sinks::ansicolor_sink<spdlog::details::console_nullmutex>;
template class spdlog::sinks::ansicolor_stderr_sink<spdlog::details::console_nullmutex>;
