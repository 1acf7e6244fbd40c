#pragma once

#include <string_view>
#include <vector>

namespace ZOL::Backends {

/// The known word that was probably meant by an unknown one: the one that starts with it or that it
/// starts with, or the one with few other letters. Ignores case. Empty if no word is near.
std::string_view nearestWord(std::string_view unknown, const std::vector<std::string_view>& known);

} // namespace ZOL::Backends
