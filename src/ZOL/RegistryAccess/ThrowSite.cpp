#include "ZOL/RegistryAccess/ThrowSite.h"

#include <string>

#include "ZOL/RegistryAccess/Registry.h"

namespace ZOL::RegistryAccess {

template <typename Error>
void raiseCheckFailure(const char* expression, const char* message, const char* filename,
                       int lineNumber) {
    const std::string text = std::string(expression) + ": " + message;
    throw Error(text.c_str(), filename, lineNumber);
}

template void raiseCheckFailure<Registry::NotInitialized>(const char*, const char*, const char*,
                                                          int);
template void raiseCheckFailure<Registry::OpenError>(const char*, const char*, const char*, int);

void checkHandle(const void* handle, int lineNumber) {
    if (handle == nullptr) {
        raiseCheckFailure<Registry::NotInitialized>("handle_ != 0", "Invalid handle state.",
                                                    throwFile, lineNumber);
    }
}

} // namespace ZOL::RegistryAccess
