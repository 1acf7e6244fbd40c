#pragma once

namespace ZOL::RegistryAccess {

// Every error reports this file and the fixed line number of its throw site, not those of this
// code.
constexpr const char* throwFile = "src\\..\\src\\ZOL\\RegistryAccess\\Registry";

/// Throws an Error with the message "<expression>: <message>". It is instantiated for
/// NotInitialized and OpenError.
template <typename Error>
[[noreturn]] void raiseCheckFailure(const char* expression, const char* message,
                                    const char* filename, int lineNumber);

/// Throws NotInitialized if handle is null.
void checkHandle(const void* handle, int lineNumber);

} // namespace ZOL::RegistryAccess
