#pragma once

#include <string_view>

#include "ZOL/Framework/Framework.h"

#include "WideText.h"

/// Sets a property to an ASCII text.
inline void setProperty(std::string_view name, std::string_view value) {
    ZOL::Framework::Framework::propertyManager()->setProperty(support::wide(name),
                                                              support::wide(value));
}
