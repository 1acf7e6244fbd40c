#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

/// Keeps others from renaming and deleting a file during its lifetime, as a viewer on Windows does
/// that does not share deletion. On Linux the process needs mounts of its own.
class HeldFile {
public:
    explicit HeldFile(std::filesystem::path path);
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile();

    /// What must be done in the process before.
    static void prepare();

    /// What the system says to a program that renames it.
    static std::string refusal();

private:
    std::filesystem::path path_;
    std::intptr_t handle_ = 0; ///< on Windows
};
