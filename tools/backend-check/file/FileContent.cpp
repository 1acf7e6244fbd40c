// Checks "file-format" to "runtime".

#include <algorithm>
#include <regex>
#include <string>
#include <vector>

#include "Checks.h"
#include "Text.h"
#include "file/CppAbi.h"
#include "file/LibraryFile.h"

namespace backendcheck {

namespace {

constexpr const char* entryPoint = "createBackend";
constexpr const char* declaration =
    "it is declared: extern \"C\" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();";

/// Only the letters, in lower case: common to all decorated forms of a name.
std::string letters(const std::string& name) {
    static const std::regex others("[^a-z]");
    return std::regex_replace(lower(name), others, "");
}

std::string describeNearMiss(const std::string& name) {
    if (name.compare(0, 2, "_Z") == 0 || name.front() == '?') {
        return ", which is the name as C++ mangles it: extern \"C\" is missing";
    }
    if (name.find('@') != std::string::npos || name.front() == '_') {
        return ", which is a decorated name: use no other calling convention, or a "
               "module-definition file";
    }
    return ", and the name must be exactly createBackend";
}

std::string describeMissingEntryPoint(const LibraryFile& library,
                                      const std::vector<std::string>& exports) {
    for (const std::string& name : exports) {
        if (letters(name).find(letters(entryPoint)) != std::string::npos) {
            return "it exports " + name + describeNearMiss(name);
        }
    }
    if (std::find(library.hidden.begin(), library.hidden.end(), entryPoint) !=
        library.hidden.end()) {
        return "createBackend is defined, but not exported: ZOL_BACKEND_EXPORT is missing, or a "
               "version script hides it";
    }
    return "it does not export createBackend" +
           (exports.empty() ? std::string(", nor any other name") : ", but " + listed(exports));
}

/// Checks "entry-point" and "exports". False if there is no entry point.
bool checkExports(const LibraryFile& library, Report& report) {
    const ExportedName* entry = nullptr;
    std::vector<std::string> others;
    for (const ExportedName& exported : library.exports) {
        if (exported.name == entryPoint) {
            entry = &exported;
        } else {
            others.push_back(exported.name);
        }
    }
    const bool isFunction = entry != nullptr && entry->isFunction;
    if (isFunction) {
        report.add({"entry-point", Result::Ok, "it exports the function createBackend"});
    } else if (entry != nullptr) {
        report.add({"entry-point", Result::Wrong,
                    "createBackend is exported as data, and must be a function: a call of it "
                    "would end the host"});
    } else {
        report.add({"entry-point", Result::Wrong,
                    describeMissingEntryPoint(library, others) + "\n" + declaration});
    }
    if (others.empty()) {
        report.add({"exports", Result::Ok, "nothing else is exported"});
    } else {
        report.add(
            {"exports", Result::Note,
             "it also exports " + listed(others) +
                 "\nnames of other modules may conflict with these; zol_add_backend hides them"});
    }
    return isFunction;
}

/// Whether it imports a name of the framework that a compiler of the other C++ ABI mangled. The
/// modules of both have the same file names. Windows only.
bool isOfOtherAbi(const LibraryFile& library) {
    const std::string ours = lower(frameworkFile().filename().u8string());
    return std::any_of(library.imports.begin(), library.imports.end(), [&ours](const auto& module) {
        const auto& [name, symbols] = module;
        return lower(name) == ours &&
               std::any_of(symbols.begin(), symbols.end(), &isMangledByOthers);
    });
}

/// False if loading it makes no sense.
bool checkFramework(const LibraryFile& library, Report& report) {
    const std::string ours = frameworkFile().filename().u8string();
    const std::regex anyFramework("ZOL_Framework.*", std::regex::icase);
    std::vector<std::string> others;
    bool usesOurs = false;
    for (const std::string& needed : library.needed) {
        if (lower(needed) == lower(ours)) {
            usesOurs = true;
        } else if (std::regex_match(needed, anyFramework)) {
            others.push_back(needed);
        }
    }
    if (isOfOtherAbi(library)) {
        report.add(
            {"framework", Result::Wrong,
             std::string("it was built with ") + otherCompilers + ", and this framework with " +
                 compilers +
                 ": their classes and exceptions differ, and modules of both cannot work in one "
                 "process\nbuild it with the framework's own compiler"});
        return false;
    }
    if (!others.empty()) {
        report.add(
            {"framework", Result::Wrong,
             "it was linked with " + listed(others) + ", and this is " + ours +
                 ": modules of different releases do not work together; link it with this one"});
    } else if (usesOurs) {
        report.add({"framework", Result::Ok, "it was linked with " + ours});
    } else {
        report.add({"framework", Result::Note,
                    "it was not linked with " + ours +
                        "; that is right only if it uses no function of the framework"});
    }
    return true;
}

// The libraries of compilers and the C library. All modules of a process must use the same ones.
const std::regex& runtimeNames() {
    static const std::regex names(
        R"((libstdc\+\+|libc\+\+|libgcc_s|libunwind|libwinpthread|libc\.musl|libmcfgthread|)"
        R"(libpgmath|msvc|vcruntime|concrt|ucrt|api-ms-win-crt-|cygwin|msys).*)",
        std::regex::icase);
    return names;
}

/// The library that is meant, in lower case. Visual C++ has several files with one version number,
/// and of these a module imports what it happens to use.
std::string runtimeOf(const std::string& fileName) {
    static const std::regex part(R"((msvcp|vcruntime|concrt)(\d+)(_\d+)?(d?)(_[a-z_]+)?\.dll)");
    const std::string name = lower(fileName);
    std::smatch parts;
    if (std::regex_match(name, parts, part)) {
        return "vcruntime" + parts[2].str() + parts[4].str() + ".dll";
    }
    return name.rfind("api-ms-win-crt-", 0) == 0 ? "ucrtbase.dll" : name;
}

void checkRuntime(const LibraryFile& library, Report& report) {
    std::vector<std::string> expected = readLibrary(frameworkFile()).needed;
    expected.emplace_back("libgcc_s.so.1");
    // Has no C++ types, and libstdc++-6.dll needs it: whether a module imports it as well depends
    // on the version of the compiler.
    expected.emplace_back("libwinpthread-1.dll");
    std::vector<std::string> shared;
    std::vector<std::string> foreign;
    for (const std::string& needed : library.needed) {
        if (!std::regex_match(needed, runtimeNames())) {
            continue;
        }
        const bool known =
            std::any_of(expected.begin(), expected.end(), [&](const std::string& name) {
                return runtimeOf(name) == runtimeOf(needed);
            });
        (known ? shared : foreign).push_back(needed);
    }
    if (!foreign.empty()) {
        report.add({"runtime", Result::Wrong,
                    "it uses runtime libraries that the framework does not: " + listed(foreign) +
                        "\nbuild it with the framework's own compiler and standard library"});
    } else if (library.hasOwnRuntime) {
        report.add({"runtime", Result::Wrong, ownRuntimeFault});
    } else {
        report.add({"runtime", Result::Ok,
                    shared.empty() ? "it brings no runtime library of its own"
                                   : "it shares the runtime libraries: " + listed(shared)});
    }
}

} // namespace

bool checkFile(const std::filesystem::path& file, Report& report) {
    LibraryFile library;
    try {
        library = readLibrary(file);
    } catch (const NotALibrary& fault) {
        report.add({"file-format", Result::Wrong, file.filename().u8string() + " " + fault.what()});
        return false;
    }
    report.add({"file-format", Result::Ok, "it is a library for this platform"});
    const bool hasEntryPoint = checkExports(library, report);
    const bool fitsFramework = checkFramework(library, report);
    checkRuntime(library, report);
    return hasEntryPoint && fitsFramework;
}

} // namespace backendcheck
