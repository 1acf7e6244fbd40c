#pragma once

#include "Shared.h"

#if defined(_WIN32)
#define TWO_MODULES_EXPORT __declspec(dllexport)
#else
#define TWO_MODULES_EXPORT __attribute__((visibility("default")))
#endif

/// The functions of the two modules. The host does not link to them but resolves them by name, with
/// the types declared here.
namespace TwoModules {

extern "C" {

// TwoModulesReader. The first two throw FrameworkException if the file cannot be read.
TWO_MODULES_EXPORT void openFile(const char* path);
/// Logs the next line and returns it, valid until the next call; null at the end of the file.
TWO_MODULES_EXPORT const char* readLine();
TWO_MODULES_EXPORT View viewOfReader();

// TwoModulesAuditor.
/// Returns how many messages it logged about the line.
TWO_MODULES_EXPORT int checkLine(const char* line);
/// The result as text. The caller frees it with MemoryManager::deallocate.
TWO_MODULES_EXPORT char* auditResult();
TWO_MODULES_EXPORT View viewOfAuditor();

} // extern "C"

} // namespace TwoModules
