// Check "file-name".

#include <algorithm>
#include <regex>
#include <stdexcept>
#include <vector>

#include "Checks.h"
#include "Environment.h"
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
    const std::string base = std::regex_replace(fs::u8path(name).filename().u8string(), end, "",
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
        const std::string fileName = entry.path().filename().u8string();
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
        std::string found = entry.path().filename().u8string();
        if (lower(found) == lower(file.filename().u8string()) &&
            fs::equivalent(entry, file, error)) {
            return found;
        }
    }
    return file.filename().u8string();
}

/// What a file of this type is; such as "is a folder".
const char* describe(fs::file_type type) {
    switch (type) {
    case fs::file_type::directory:
        return "is a folder";
    case fs::file_type::fifo:
        return "is a FIFO (named pipe)";
    case fs::file_type::socket:
        return "is a socket";
    case fs::file_type::block:
    case fs::file_type::character:
        return "is a device";
    default:
        return "is no file";
    }
}

/// Throws std::runtime_error if there is no such folder.
void requireFolder(const fs::path& folder) {
    std::error_code error;
    if (!fs::exists(folder, error)) {
        throw std::runtime_error("there is no folder " + folder.u8string());
    }
    if (!fs::is_directory(folder, error)) {
        throw std::runtime_error(folder.u8string() + " is not a folder");
    }
}

std::string describeMissing(const std::string& name, const std::vector<fs::path>& folders) {
    std::string text = rule(name) + ", which does not exist";
    const std::string meant = baseNameIn(name);
    if (!meant.empty()) {
        text += "\ngive the base name alone: " + meant;
    }
    for (const fs::path& searched : folders) {
        const std::vector<std::string> others = nearMisses(searched, name);
        if (!others.empty()) {
            text += "\n" + searched.u8string() + " contains " + listed(others) + ": rename it to " +
                    fileNameFor(meant.empty() ? name : meant);
            break;
        }
    }
    return text;
}

} // namespace

fs::path findPlugin(const std::string& name, const fs::path& folder, Report& report) {
    const auto wrong = [&report](const std::string& text) {
        report.add({"file-name", Result::Wrong, text});
        return fs::path();
    };
    if (!folder.empty()) {
        requireFolder(folder);
    }
    const fs::path namedFolder = fs::u8path(name).parent_path();
    if (!namedFolder.empty()) {
        return wrong("the name \"" + name +
                     "\" contains a path: a host passes the base name, and the loader searches its "
                     "folders\ngive the base name and the folder: " +
                     fs::u8path(name).filename().u8string() + " " +
                     (folder / namedFolder).make_preferred().u8string());
    }
    if (nameForLoader(name).empty()) {
        return wrong("no host can load \"" + name +
                     "\": the name has characters outside the code page of this system");
    }
    const std::vector<fs::path> folders =
        folder.empty() ? searchFolders() : std::vector<fs::path>{folder};
    std::error_code error;
    for (const fs::path& searched : folders) {
        const fs::path file = searched / fs::u8path(fileNameFor(name));
        const fs::file_status status = fs::status(file, error);
        if (fs::is_regular_file(status)) {
            report.add({"file-name", Result::Ok,
                        rule(name) + ", which exists: " +
                            (searched / fs::u8path(nameOnDisk(file))).make_preferred().u8string()});
            return fs::absolute(file);
        }
        if (fs::exists(status)) {
            return wrong(file.u8string() + " " + describe(status.type()) + ", not a library");
        }
        if (fs::is_symlink(fs::symlink_status(file, error))) {
            return wrong(file.u8string() + " is a symbolic link to a file that does not exist");
        }
    }
    return wrong(describeMissing(name, folders));
}

} // namespace backendcheck
