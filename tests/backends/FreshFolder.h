#pragma once

#include <filesystem>
#include <functional>
#include <string>

/// Runs the body of the current test in a new process, with an empty current folder that is removed
/// when the process has ended. Back ends read their settings once and keep their files open until
/// the process ends.
void inFreshFolder(const std::function<void()>& body);

/// The text of a file, with "\n" as line end.
std::string textOf(const std::filesystem::path& path);
