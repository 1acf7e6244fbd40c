// Which classes of exceptions leave the module: what modules that catch them depend on.

#include <stdexcept>
#include <string>
#include <typeinfo>

#include <cxxabi.h>
#include <gtest/gtest.h>

#include "Golden.h"
#include "ModuleSurface.h"
#include "WideText.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/Framework.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using boundary::expectGolden;
using boundary::readable;
using support::wide;
using ZOL::Framework::Framework;
using ZOL::Framework::Exceptions::FrameworkException;
using namespace ZOL::Framework::GenericLogger;

namespace {

/// The class, and those above it up to the one that has none.
std::string lineage(const std::type_info& type) {
    std::string text = readable(type.name());
    const auto* derived = dynamic_cast<const abi::__si_class_type_info*>(&type);
    while (derived != nullptr) {
        text += ", a kind of " + readable(derived->__base_type->name());
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

TEST(ExceptionTypes, ThatLeaveTheModuleAreThoseOfTheStoredList) {
    expectGolden(
        "exceptions.txt",
        {"reading a property that is not there: " + thrownBy<FrameworkException>([] {
             Framework::propertyManager()->readProperty(wide("missing"));
         }),
         "clearing a property that is not there: " + thrownBy<FrameworkException>([] {
             Framework::propertyManager()->clearProperty(wide("missing"));
         }),
         "installing no back end: " + thrownBy<LoggerException>([] {
             Logger::installBackend(static_cast<LoggerBackend*>(nullptr));
         }),
         "installing a back end whose library is not there: " +
             thrownBy<std::runtime_error>([] { Logger::installBackend("No such library"); })});
}

} // namespace
