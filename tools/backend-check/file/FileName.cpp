// Check "file-name".

#include <algorithm>
#include <regex>
#include <vector>

#include "Checks.h"
#include "Text.h"
#include "file/LibraryFile.h"

namespace backendcheck {

namespace fs = std::filesystem;

namespace {

std::string fileNameFor(const std::string& name) {
    return name + "_r" ZOL_MODULE_SUFFIX;
}

/// The base name in a name with more: "Mine" of "some/Mine_r.dll". Empty if there is no more.
std::string baseNameIn(const std::string& name) {
    static const std::regex end(R"((_r)?(\.so)?(\.dll)?$)", std::regex::icase);
    const std::string base = std::regex_replace(fs::path(name).filename().string(), end, "",
                                                std::regex_constants::format_first_only);
    return base != name ? base : std::string();
}

/// A file name without usual prefixes and suffixes, in lower case; empty if it is no library.
std::string bare(const std::string& fileName) {
    static const std::regex library(R"((lib)?(.*?)(_r|-r|_d|d)?\.(dll|so|dylib))");
    const std::string name = lower(fileName);
    std::smatch parts;
    return std::regex_match(name, parts, library) ? parts[2].str() : std::string();
}

/// Files in the folder with similar names.
std::vector<std::string> nearMisses(const fs::path& folder, const std::string& name) {
    std::vector<std::string> names;
    std::error_code error;
    const std::string wanted = bare(fileNameFor(name));
    for (const auto& entry : fs::directory_iterator(folder, error)) {
        const std::string fileName = entry.path().filename().string();
        const std::string found = bare(fileName);
        if (!found.empty() && (found == wanted || found + "d" == wanted || found == wanted + "d" ||
                               lower(fileName).find(lower(name) + "_r.") != std::string::npos ||
                               found == lower(name))) {
            names.push_back(fileName);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::string rule(const std::string& name) {
    return "for \"" + name + "\" a host asks for " + fileNameFor(name);
}

/// The name as the folder has it: on Windows its case may differ from the file's.
std::string nameOnDisk(const fs::path& file) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(file.parent_path(), error)) {
        std::string found = entry.path().filename().string();
        if (lower(found) == lower(file.filename().string()) && fs::equivalent(entry, file, error)) {
            return found;
        }
    }
    return file.filename().string();
}

} // namespace

fs::path findPlugin(const std::string& name, const fs::path& folder, Report& report) {
    const auto wrong = [&report](const std::string& text) {
        report.add({"file-name", Result::Wrong, text});
        return fs::path();
    };
    const std::vector<fs::path> folders =
        folder.empty() ? searchFolders() : std::vector<fs::path>{folder};
    std::error_code error;
    for (const fs::path& searched : folders) {
        const fs::path file = searched / fileNameFor(name);
        if (fs::is_regular_file(file, error)) {
            report.add({"file-name", Result::Ok,
                        rule(name) + ", and it is there: " +
                            (searched / nameOnDisk(file)).make_preferred().string()});
            return fs::absolute(file);
        }
        if (fs::is_directory(file, error)) {
            return wrong(file.string() + " is a folder");
        }
        if (fs::is_symlink(file, error)) {
            return wrong(file.string() + " is a link that leads nowhere");
        }
    }

    std::string text = rule(name) + ", which is not there";
    if (!folder.empty() && !fs::is_directory(folder, error)) {
        text = folder.string() + " is no folder";
    }
    const std::string meant = baseNameIn(name);
    if (!meant.empty()) {
        text += "\ngive the base name alone: " + meant;
    }
    for (const fs::path& searched : folders) {
        const std::vector<std::string> others = nearMisses(searched, name);
        if (!others.empty()) {
            text += "\n" + searched.string() + " has " + listed(others) + ": rename it to " +
                    fileNameFor(meant.empty() ? name : meant);
            break;
        }
    }
    return wrong(text);
}

} // namespace backendcheck
