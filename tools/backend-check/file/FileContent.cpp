#include "file/FileChecks.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <string>
#include <vector>

#include "Text.h"
#include "file/LibraryFile.h"
#include "file/LibrarySearch.h"

namespace backendcheck {

namespace {

constexpr const char* entryPoint = "createBackend";
constexpr const char* declaration =
    "it is declared: extern \"C\" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();";

/// Letters alone, in lower case: what remains of a name however it is decorated.
std::string plain(const std::string& name) {
    std::string letters;
    for (const char c : name) {
        if (std::isalpha(static_cast<unsigned char>(c)) != 0) {
            letters += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
        }
    }
    return letters;
}

std::string reasonFor(const std::string& nearMiss) {
    if (nearMiss.compare(0, 2, "_Z") == 0 || nearMiss.front() == '?') {
        return "it exports " + nearMiss +
               ", which is the name as C++ mangles it: extern \"C\" is "
               "missing";
    }
    if (nearMiss.find('@') != std::string::npos || nearMiss.front() == '_') {
        return "it exports " + nearMiss +
               ", a name with something added: use no other calling "
               "convention, or a module-definition file";
    }
    return "it exports " + nearMiss + ", and the name must be exactly createBackend";
}

bool checkEntryPoint(const LibraryFile& library, Report& report) {
    for (const ExportedName& exported : library.exports) {
        if (exported.name == entryPoint) {
            if (exported.isFunction) {
                report.add({"entry-point", Result::Ok, "it exports the function createBackend"});
                return true;
            }
            report.add({"entry-point", Result::Wrong,
                        "createBackend is exported as data, and must be a function: a call of it "
                        "would end the host"});
            return false;
        }
    }
    std::string text;
    for (const ExportedName& exported : library.exports) {
        if (plain(exported.name).find(plain(entryPoint)) != std::string::npos) {
            text = reasonFor(exported.name);
        }
    }
    if (text.empty() && std::find(library.hidden.begin(), library.hidden.end(), entryPoint) !=
                            library.hidden.end()) {
        text = "createBackend is there, but not exported: ZOL_BACKEND_EXPORT is missing, or a "
               "version script hides it";
    }
    if (text.empty()) {
        std::vector<std::string> names;
        for (const ExportedName& exported : library.exports) {
            names.push_back(exported.name);
        }
        text = "it does not export createBackend, but " +
               (names.empty() ? std::string("nothing at all") : listed(names));
    }
    report.add({"entry-point", Result::Wrong, text + "\n" + declaration});
    return false;
}

void checkExports(const LibraryFile& library, Report& report) {
    std::vector<std::string> others;
    for (const ExportedName& exported : library.exports) {
        if (exported.name != entryPoint) {
            others.push_back(exported.name);
        }
    }
    if (others.empty()) {
        report.add({"exports", Result::Ok, "nothing else is exported"});
    } else {
        report.add({"exports", Result::Note,
                    "it also exports " + listed(others) +
                        "\nother modules may meet these by accident; zol_add_backend hides them"});
    }
}

void checkFramework(const LibraryFile& library, Report& report) {
    const std::string ours = frameworkFile().filename().string();
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
    if (!others.empty()) {
        report.add({"framework", Result::Wrong,
                    "it was linked with " + listed(others) + ", and this is " + ours +
                        ": modules of different releases share nothing. Link it with this one"});
    } else if (usesOurs) {
        report.add({"framework", Result::Ok, "it was linked with " + ours});
    } else {
        report.add({"framework", Result::Note,
                    "it was not linked with " + ours +
                        "; that is right only if it uses nothing of the framework's"});
    }
}

// Libraries of which a process must have one kind: the compiler's and the C library's.
const std::regex& runtimeNames() {
    static const std::regex names(
        R"((libstdc\+\+|libc\+\+|libgcc_s|libunwind|libwinpthread|libc\.musl|libmcfgthread|)"
        R"(libpgmath|msvc|vcruntime|concrt|ucrt|api-ms-win-crt-|cygwin|msys).*)",
        std::regex::icase);
    return names;
}

void checkRuntime(const LibraryFile& library, Report& report) {
    std::vector<std::string> expected = readLibrary(frameworkFile()).needed;
    expected.emplace_back("libgcc_s.so.1");
    std::vector<std::string> shared;
    std::vector<std::string> foreign;
    for (const std::string& needed : library.needed) {
        if (!std::regex_match(needed, runtimeNames())) {
            continue;
        }
        const bool known =
            std::any_of(expected.begin(), expected.end(),
                        [&](const std::string& name) { return lower(name) == lower(needed); });
        (known ? shared : foreign).push_back(needed);
    }
    if (!foreign.empty()) {
        report.add({"runtime", Result::Wrong,
                    "it uses runtime libraries that the framework does not: " + listed(foreign) +
                        "\nbuild it with the framework's own compiler and standard library"});
    } else if (library.hasOwnCppRuntime) {
        report.add({"runtime", Result::Wrong,
                    "it has a C++ runtime library of its own linked in: exceptions that pass "
                    "between it and others get lost\nlink without -static, -static-libstdc++ and "
                    "-static-libgcc"});
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
    } catch (const NotALibrary& refusal) {
        report.add({"file-format", Result::Wrong, file.filename().string() + " " + refusal.what()});
        return false;
    }
    report.add({"file-format", Result::Ok, "it is a library for this platform"});
    const bool hasEntryPoint = checkEntryPoint(library, report);
    checkExports(library, report);
    checkFramework(library, report);
    checkRuntime(library, report);
    return hasEntryPoint;
}

} // namespace backendcheck
