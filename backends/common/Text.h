#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace ZOL::Backends {

/// Converts the text of a property to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string utf8(const Framework::Management::WideString& text);

/// Makes a message one line: replaces line breaks and zero bytes by \n, \r and \0, and removes line
/// breaks at the end.
std::string escapeControlCharacters(std::string_view text);

/// Shortens a text to at most maxBytes, with "..." at its end. Never splits a UTF-8 character.
std::string truncateUtf8(std::string text, std::size_t maxBytes);

/// Compares two texts. Ignores the case of ASCII letters only.
bool equalsIgnoreCase(std::string_view left, std::string_view right);

/// Removes spaces, tabs and line breaks from both ends.
std::string_view trim(std::string_view text);

} // namespace ZOL::Backends
