#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// The descriptors through which this process has a file of its current folder open.
inline std::vector<int> descriptorsOf(const std::string& name) {
    namespace fs = std::filesystem;
    std::vector<int> descriptors;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        if (fs::is_symlink(entry) && fs::read_symlink(entry) == fs::current_path() / name) {
            descriptors.push_back(std::stoi(entry.path().filename().string()));
        }
    }
    return descriptors;
}
