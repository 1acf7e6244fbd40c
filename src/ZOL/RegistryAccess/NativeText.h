#pragma once

#include <string>

namespace ZOL::RegistryAccess {

// Every name goes through toNative on its way to the platform, and every text from the platform
// through fromNative. The ANSI functions take and give the bytes as they are.

std::string toNative(const std::string& text);
std::string fromNative(const std::string& text);

/// Empty: no wide text is ever read.
std::string fromWide(const std::wstring& text);

/// What stands behind the last backslash of a key path; the whole path if there is none.
std::string lastPathComponent(const std::string& path);

} // namespace ZOL::RegistryAccess
