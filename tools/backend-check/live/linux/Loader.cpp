#include "live/Loader.h"

#include <cstdio>
#include <memory>

#include <dlfcn.h>

#include "file/LibrarySearch.h"

namespace backendcheck {

namespace {

constexpr const char* loader = "/lib64/ld-linux-x86-64.so.2";

std::string shellQuoted(const std::string& text) {
    std::string result = "'";
    for (const char c : text) {
        if (c == '\'') {
            result += "'\\''";
        } else {
            result += c;
        }
    }
    return result + "'";
}

std::string trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(" \t\n");
    const std::size_t end = text.find_first_of(" \t\n", begin);
    return begin == std::string::npos ? std::string() : text.substr(begin, end - begin);
}

/// Every line of what the loader says when it only tells what it would do.
std::vector<std::string> loaderTrace(const std::filesystem::path& file) {
    // A host has the framework loaded already, wherever it lies.
    const char* const folders = std::getenv(searchVariable());
    const std::string search = std::string(folders != nullptr ? folders : "") + searchSeparator() +
                               frameworkFile().parent_path().string();
    const std::string command = "LD_TRACE_LOADED_OBJECTS=1 LD_WARN=yes LD_BIND_NOW=yes "
                                "LD_LIBRARY_PATH=" +
                                shellQuoted(search) + " " + loader + " " +
                                shellQuoted(file.string()) + " 2>&1";
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(popen(command.c_str(), "r"),
                                                                 &pclose);
    std::vector<std::string> lines;
    char buffer[4096];
    while (output != nullptr && std::fgets(buffer, sizeof(buffer), output.get()) != nullptr) {
        lines.emplace_back(buffer);
    }
    return lines;
}

} // namespace

Missing missingFor(const std::filesystem::path& file) {
    Missing missing;
    for (const std::string& line : loaderTrace(file)) {
        constexpr const char* undefined = "undefined symbol: ";
        const std::size_t symbol = line.find(undefined);
        if (line.find(" => not found") != std::string::npos) {
            missing.libraries.push_back(trimmed(line));
        } else if (symbol != std::string::npos) {
            std::string name = trimmed(line.substr(symbol + std::string(undefined).size()));
            if (!name.empty() && name.back() == ',') {
                name.pop_back();
            }
            missing.symbols.push_back(name);
        } else if (line.find("version `") != std::string::npos) {
            missing.libraries.push_back(line.substr(0, line.find('\n')));
        }
    }
    return missing;
}

void* loadedEntryPoint(const std::string& fileName, std::string& error) {
    void* const library = dlopen(fileName.c_str(), RTLD_NOW | RTLD_LOCAL);
    void* const function = library != nullptr ? dlsym(library, "createBackend") : nullptr;
    if (function == nullptr) {
        const char* const text = dlerror();
        error = text != nullptr ? text : "createBackend is at address 0";
    }
    return function;
}

std::filesystem::path fileWith(void* function) {
    Dl_info info = {};
    return dladdr(function, &info) != 0 ? std::filesystem::path(info.dli_fname)
                                        : std::filesystem::path();
}

} // namespace backendcheck
