#include "file/CppAbi.h"

namespace backendcheck {

namespace {

using namespace std::string_view_literals;

// The name of a type that each copy of the C++ runtime defines. With its terminators: a mere
// reference to the symbol is not a copy.
constexpr std::string_view runtimeTypeName = "\0N10__cxxabiv117__class_type_infoE\0"sv;

} // namespace

const char* const compilers = "g++ or clang++";
const char* const otherCompilers = "Visual C++";

bool isMangledByOthers(const std::string& name) {
    return name.rfind('?', 0) == 0;
}

bool hasOwnRuntime(const LibraryFile&, std::string_view content) {
    return content.find(runtimeTypeName) != std::string_view::npos;
}

const char* const ownRuntimeFault =
    "it has a C++ runtime library of its own linked in: exceptions cannot be caught in other "
    "modules\nlink without -static, -static-libstdc++ and -static-libgcc";

} // namespace backendcheck
