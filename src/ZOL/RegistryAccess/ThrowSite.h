#pragma once

namespace ZOL::RegistryAccess {

// Every error names this file and the line of its site, whatever this code's own files are called.
constexpr const char* throwFile = "src\\..\\src\\ZOL\\RegistryAccess\\Registry";

/// Throws an Error whose message is "<expression>: <message>". There are instances for
/// NotInitialized and OpenError.
template <typename Error>
[[noreturn]] void raiseCheckFailure(const char* expression, const char* message,
                                    const char* filename, int lineNumber);

/// Throws NotInitialized unless the node has a handle.
void checkHandle(const void* handle, int lineNumber);

} // namespace ZOL::RegistryAccess
