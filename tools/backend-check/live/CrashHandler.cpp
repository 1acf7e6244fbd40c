#include "live/CrashHandler.h"

#include <cstdlib>
#include <exception>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"

#include "live/ThisProcess.h"

namespace backendcheck {

CheckRecord* crashRecord = nullptr;

void handleCrashes(CheckRecord& record) {
    crashRecord = &record;
    std::set_terminate(&onTerminate);
    suppressRuntimeDialogs();
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
    std::string type = typeOfCurrentException();
    if (type.empty()) {
        return "an exception of another runtime library";
    }
    try {
        throw;
    } catch (const std::exception& error) {
        return type + " (\"" + error.what() + "\")";
    } catch (const ZOL::Framework::GenericLogger::LoggerException& error) {
        return type + " (\"" + error.message() + "\")";
    } catch (const ZOL::Framework::Exceptions::FrameworkException& error) {
        return type + " (\"" + error.message() + "\")";
    } catch (...) {
        return type;
    }
}

} // namespace backendcheck
