#pragma once

#include <string>
#include <string_view>

#include "file/LibraryFile.h"

namespace backendcheck {

// What the file of a plug-in shows of the C++ ABI. One source file per ABI: itanium/ for g++ and
// clang++, msvc/ for Visual C++. This program and the framework have the same one.

/// The compilers of this ABI, and those of the other one.
extern const char* const compilers;
extern const char* const otherCompilers;

/// Whether a compiler of the other ABI mangled the name.
bool isMangledByOthers(const std::string& name);

/// Whether a library has a C++ runtime library of its own linked in.
/// @param content of its file.
bool hasOwnRuntime(const LibraryFile& library, std::string_view content);

/// Why that is a fault, and how to correct it.
extern const char* const ownRuntimeFault;

} // namespace backendcheck
