#include "live/CurrentException.h"

#include <cstdlib>
#include <exception>
#include <memory>
#include <typeinfo>

#include <cxxabi.h>

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"

namespace backendcheck {

std::string thrownException() {
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
