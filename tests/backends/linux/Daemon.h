#pragma once

#include <string>
#include <vector>

#include <sys/types.h>

/// A program that runs until it is destroyed, or until this process ends.
class Daemon {
public:
    /// Its output goes to a file.
    Daemon(const std::vector<std::string>& command, const std::string& output);
    Daemon(const Daemon&) = delete;
    Daemon& operator=(const Daemon&) = delete;
    /// Kills it.
    ~Daemon();

private:
    pid_t id_;
};
