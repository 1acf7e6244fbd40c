#pragma once

#include <string>

namespace ZOL::RegistryAccess {

// toNative converts every name that is passed to the platform, fromNative every text that comes
// from it. For the ANSI functions both return the bytes unchanged.

std::string toNative(const std::string& text);
std::string fromNative(const std::string& text);

/// Returns an empty text: no wide text is ever read.
std::string fromWide(const std::wstring& text);

/// Returns the part of a key path after the last backslash, or the path if it has none.
std::string lastPathComponent(const std::string& path);

} // namespace ZOL::RegistryAccess
