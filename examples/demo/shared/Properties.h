#pragma once

#include <string_view>

#include "ZOL/Framework/Management/PropertyManager.h"

/// The settings that host and modules hand one another through the property store.
namespace Demo {

// The level at which a message counts as an alert, by its name: set by the host before the modules
// start, read by both of them.
constexpr const char* alertLevelProperty = "demo.alert level";

// How the first line of the file ends: set by the reader, read by the host and the auditor.
constexpr const char* lineEndProperty = "demo.line end";

void setProperty(const char* name, std::string_view ascii);

/// Valid until the property is set again.
const ZOL::Framework::Management::WideString& readProperty(const char* name);

} // namespace Demo
