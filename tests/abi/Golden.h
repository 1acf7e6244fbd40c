#pragma once

#include <string>
#include <vector>

namespace boundary {

/// Holds what was seen against the stored list of that name in goldens/, and reports every line
/// that differs by its name. A line is a name, or a name and a value with ": " between them.
///
/// With ZOL_ACCEPT_GOLDENS set in the environment it stores what was seen instead.
void expectGolden(const std::string& name, std::vector<std::string> seen);

} // namespace boundary
