#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace ZOL::Backends {

/// Converts the text of a property to UTF-8. An unpaired surrogate becomes U+FFFD.
std::string utf8(const Framework::Management::WideString& text);

/// Converts UTF-8 to UTF-16. Throws a std::exception if the text is not valid UTF-8; texts from
/// appendEscaped are.
Framework::Management::WideString utf16(std::string_view text);

/// Appends a text to a line. Line ends at the end of the text are removed. The rest is made safe to
/// show: an invalid UTF-8 sequence becomes U+FFFD, and control characters except tab become escapes
/// such as \n, \r, \0, \x1B, \x85 and \u2028. A backslash stays as it is.
void appendEscaped(std::string& line, std::string_view text);

/// The text as appendEscaped appends it.
std::string escaped(std::string_view text);

/// Whether a character would end a word of a syslog line, such as the tag: a space, a control
/// character, ':' or '['.
bool endsWord(char character);

/// The text as one word of a syslog line: escaped, with '_' for what would end the word. "-" for an
/// empty text.
std::string escapedWord(std::string_view text);

/// Shortens an escaped text to at most maxBytes, with "..." at its end. Splits neither a UTF-8
/// character nor an escape.
/// @param maxBytes at least 3.
void truncateEscaped(std::string& text, std::size_t maxBytes);

/// Compares two texts. Ignores the case of ASCII letters only.
bool equalsIgnoreCase(std::string_view left, std::string_view right);

/// Removes spaces, tabs and line breaks from both ends.
std::string_view trim(std::string_view text);

} // namespace ZOL::Backends
