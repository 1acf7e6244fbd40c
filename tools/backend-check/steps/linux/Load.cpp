#include <dlfcn.h>

#include "steps/Steps.h"

namespace backendcheck {

namespace {

/// A message that is not recognised becomes the error as it is.
void classify(const std::string& message, const std::string& fileName, LoadedLibrary& library) {
    const std::string undefined = "undefined symbol: ";
    const std::size_t symbol = message.find(undefined);
    const std::string missing = message.substr(0, message.find(": "));
    if (symbol != std::string::npos) {
        const std::size_t begin = symbol + undefined.size();
        library.missingSymbols.push_back(
            message.substr(begin, message.find_first_of(", \t", begin) - begin));
    } else if (message.find(": version `") != std::string::npos) {
        library.missingLibraries.push_back(message);
    } else if (message.find("cannot open shared object file") != std::string::npos &&
               missing != fileName) {
        library.missingLibraries.push_back(missing);
    } else {
        library.error = message;
    }
}

} // namespace

LoadedLibrary loadPlugin(const std::filesystem::path& file) {
    LoadedLibrary library;
    const std::string fileName = file.filename().u8string();
    // glibc declares dlopen as noexcept, but exceptions of static initialisers come out of it.
    void* (*const volatile open)(const char*, int) = &dlopen;
    void* const handle = open(fileName.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        classify(dlerror(), fileName, library);
        return library;
    }
    void* const function = dlsym(handle, "createBackend");
    Dl_info info = {};
    if (function == nullptr || dladdr(function, &info) == 0) {
        const char* const text = dlerror();
        library.error = text != nullptr ? text : "createBackend is at address 0";
    } else {
        library.file = info.dli_fname;
    }
    return library;
}

} // namespace backendcheck
