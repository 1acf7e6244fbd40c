// The classes of the exceptions that the module throws, which modules catch by type.

#include <stdexcept>
#include <string>
#include <typeinfo>
#include <vector>

#include <cxxabi.h>

#include "Goldens.h"
#include "ModuleExports.h"
#include "WideText.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using support::wide;
using surface::readable;
using ZOL::Framework::Framework;
using ZOL::Framework::Exceptions::FrameworkException;
using namespace ZOL::Framework::GenericLogger;

namespace {

/// The class and its base classes, up to the root.
std::string lineage(const std::type_info& type) {
    std::string text = readable(type.name());
    const auto* derived = dynamic_cast<const abi::__si_class_type_info*>(&type);
    while (derived != nullptr) {
        text += ", derived from " + readable(derived->__base_type->name());
        derived = dynamic_cast<const abi::__si_class_type_info*>(derived->__base_type);
    }
    return text;
}

template <typename Root, typename Function>
std::string thrownBy(Function function) {
    try {
        function();
    } catch (const Root& error) {
        return lineage(typeid(error));
    } catch (...) {
        return "something else";
    }
    return "nothing";
}

} // namespace

std::vector<std::string> surface::currentExceptions() {
    return {"reading a property that is not there: " + thrownBy<FrameworkException>([] {
                Framework::propertyManager()->readProperty(wide("missing"));
            }),
            "clearing a property that is not there: " + thrownBy<FrameworkException>([] {
                Framework::propertyManager()->clearProperty(wide("missing"));
            }),
            "installing no back end: " + thrownBy<LoggerException>([] {
                Logger::installBackend(static_cast<LoggerBackend*>(nullptr));
            }),
            "installing a back end whose library is not there: " +
                thrownBy<std::runtime_error>([] { Logger::installBackend("No such library"); })};
}
