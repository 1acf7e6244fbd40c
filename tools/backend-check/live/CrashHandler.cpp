#include "live/CrashHandler.h"

#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

#include <cxxabi.h>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"

#include "live/ThisProcess.h"

namespace backendcheck {

CheckRecord* crashRecord = nullptr;

void handleCrashes(CheckRecord& record) {
    crashRecord = &record;
    std::set_terminate(&onTerminate);
    installCrashHandlers();
}

void onTerminate() {
    crashRecord->terminated(
        std::current_exception() != nullptr
            ? "uncaught " + describeCurrentException() +
                  ": it came out of a thread, a destructor or a function that is noexcept"
            : "std::terminate was called: an object was used after its end, or a std::thread was "
              "destroyed that was not joined");
    std::abort();
}

std::string describeCurrentException() {
    const std::type_info* const type = abi::__cxa_current_exception_type();
    if (type == nullptr) {
        return "an exception of another runtime library";
    }
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> name(
        abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
    std::string typeName = name != nullptr ? name.get() : type->name();
    try {
        throw;
    } catch (const std::exception& error) {
        return typeName + " (\"" + error.what() + "\")";
    } catch (const ZOL::Framework::GenericLogger::LoggerException& error) {
        return typeName + " (\"" + error.message() + "\")";
    } catch (const ZOL::Framework::Exceptions::FrameworkException& error) {
        return typeName + " (\"" + error.message() + "\")";
    } catch (...) {
        return typeName;
    }
}

} // namespace backendcheck
