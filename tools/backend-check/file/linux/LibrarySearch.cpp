#include "file/LibrarySearch.h"

#include <cstdlib>

#include <dlfcn.h>

#include "ZOL/Framework/Framework.h"

#include "Text.h"

namespace backendcheck {

const char* librarySuffix() {
    return ".so";
}

const char* searchVariable() {
    return "LD_LIBRARY_PATH";
}

char searchSeparator() {
    return ':';
}

std::vector<std::filesystem::path> searchFolders() {
    std::vector<std::filesystem::path> folders;
    for (const std::string& folder : split(std::getenv(searchVariable()), searchSeparator())) {
        folders.emplace_back(folder.empty() ? "." : folder);
    }
    folders.push_back(frameworkFile().parent_path());
    for (const char* const folder : {"/lib/x86_64-linux-gnu", "/usr/lib/x86_64-linux-gnu", "/lib",
                                     "/usr/lib", "/usr/local/lib"}) {
        folders.emplace_back(folder);
    }
    return folders;
}

std::filesystem::path frameworkFile() {
    Dl_info info = {};
    dladdr(reinterpret_cast<const void*>(&ZOL::Framework::Framework::propertyManager), &info);
    return std::filesystem::canonical(info.dli_fname);
}

std::filesystem::path programFile() {
    return std::filesystem::read_symlink("/proc/self/exe");
}

void poisonFreedMemory() {
    setVariable("MALLOC_PERTURB_", "165");
}

void setVariable(const char* name, const std::string& value) {
    setenv(name, value.c_str(), 1);
}

} // namespace backendcheck
