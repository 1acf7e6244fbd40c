#pragma once

#include <filesystem>
#include <functional>
#include <string>

/// Runs the body of the running test in a process of its own, in an empty folder that is the
/// current one and is removed when the process has ended. Back ends read their settings once, and
/// keep their files open for as long as the process lives.
void inFreshFolder(const std::function<void()>& body);

/// The text of a file, with "\n" for the platform's line end.
std::string textOf(const std::filesystem::path& path);
