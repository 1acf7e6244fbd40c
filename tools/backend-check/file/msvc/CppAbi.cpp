#include "file/CppAbi.h"

#include <algorithm>

#include "Text.h"

namespace backendcheck {

const char* const compilers = "Visual C++";
const char* const otherCompilers = "g++ or clang++ of mingw-w64";

bool isMangledByOthers(const std::string& name) {
    return name.rfind("_Z", 0) == 0;
}

bool hasOwnRuntime(const LibraryFile& library, std::string_view) {
    // The start-up code of every library that is linked with /MD or /MDd imports functions of it.
    return std::none_of(library.needed.begin(), library.needed.end(), [](const std::string& name) {
        return lower(name).rfind("ucrtbase", 0) == 0 ||
               lower(name).rfind("api-ms-win-crt-", 0) == 0;
    });
}

const char* const ownRuntimeFault =
    "it has a C runtime library of its own linked in, with a heap, standard streams and a locale "
    "of its own\ncompile it with /MD: in CMake, leave CMAKE_MSVC_RUNTIME_LIBRARY unset";

} // namespace backendcheck
