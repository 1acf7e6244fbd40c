#pragma once

#include <fstream>
#include <iterator>
#include <string>

/// Exit codes of CheckClient.
constexpr int checkAborted = 42;
constexpr int checkMisused = 43;
constexpr int checkThrew = 44;

/// The line of CheckClient.cpp that its usual check is in.
constexpr int checkLine = 62;

/// The content of a text file.
inline std::string contentOf(const std::string& file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// The text of a failed check without the line number.
inline std::string withoutLineNumber(std::string text) {
    const std::size_t file = text.find(".cpp:");
    if (file == std::string::npos) {
        return "no position: " + text;
    }
    const std::size_t begin = file + 5;
    return text.erase(begin, text.find(':', begin) - begin);
}
