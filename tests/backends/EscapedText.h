#pragma once

#include <string>
#include <string_view>

/// What is wrong with a text that appendEscaped has made of another one; empty if nothing is. Looks
/// at single bytes, without a library for UTF-8.
std::string findEscapingError(std::string_view text, std::string_view escaped);
