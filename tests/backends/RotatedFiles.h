#pragma once

#include <algorithm>
#include <filesystem>
#include <regex>
#include <string>
#include <vector>

#include "FreshFolder.h"

/// The rotated files of a log, oldest first: of "logs/zol.log",
/// "logs/zol.20260131T090507Z.000.log". With a day, those of DailyFile that hold it, or all with
/// ".*".
inline std::vector<std::filesystem::path> filesRotatedFrom(const std::filesystem::path& log,
                                                           const std::string& day = "") {
    const std::regex name(log.stem().string() + (day.empty() ? "" : "_" + day) +
                          R"(\.\d{8}T\d{6}Z\.\d{3})" + log.extension().string());
    const std::filesystem::path folder = log.has_parent_path() ? log.parent_path() : ".";
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (std::regex_match(entry.path().filename().string(), name)) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

/// The texts of the rotated files of a log, oldest first.
inline std::vector<std::string> rotatedTexts(const std::filesystem::path& log,
                                             const std::string& day = "") {
    std::vector<std::string> texts;
    for (const std::filesystem::path& file : filesRotatedFrom(log, day)) {
        texts.push_back(textOf(file));
    }
    return texts;
}
