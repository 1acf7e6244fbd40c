#include "live/CrashHandler.h"

#include <cstdlib>
#include <exception>
#include <typeinfo>

#include <crtdbg.h>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"

namespace backendcheck {

namespace {

/// Without the keyword of its declaration.
std::string nameOf(const std::type_info& type) {
    const std::string name = type.name();
    const std::string keyword = "class ";
    return name.compare(0, keyword.size(), keyword) == 0 ? name.substr(keyword.size()) : name;
}

template <typename Exception>
std::string classOf(const Exception& exception) {
    try {
        return nameOf(typeid(exception));
    } catch (const std::bad_typeid&) { // compiled without run-time type information
        return nameOf(typeid(Exception));
    }
}

} // namespace

std::string typeOfCurrentException() {
    try {
        throw;
    } catch (const std::exception& exception) {
        return classOf(exception);
    } catch (const ZOL::Framework::GenericLogger::LoggerException& exception) {
        return classOf(exception);
    } catch (const ZOL::Framework::Exceptions::FrameworkException& exception) {
        return classOf(exception);
    } catch (...) {
        return "an exception of a type that is not derived from std::exception";
    }
}

void suppressRuntimeDialogs() {
    // Only the debug runtime library has dialogs, and only for it these are not empty macros.
    (void)_CrtSetReportMode(_CRT_ERROR, _CRTDBG_MODE_FILE);
    (void)_CrtSetReportFile(_CRT_ERROR, _CRTDBG_FILE_STDERR);
    (void)_CrtSetReportMode(_CRT_ASSERT, _CRTDBG_MODE_FILE);
    (void)_CrtSetReportFile(_CRT_ASSERT, _CRTDBG_FILE_STDERR);
    _set_abort_behavior(0, _WRITE_ABORT_MSG);
}

} // namespace backendcheck
