#pragma once

#include <ostream>

#include "host/windows/DemoKey.h"

namespace Demo {

/// Has one operation fail for each class of error, and prints what each error says. Throws
/// std::runtime_error if one of them does not fail.
void showErrors(std::ostream& out, DemoKey& key);

} // namespace Demo
