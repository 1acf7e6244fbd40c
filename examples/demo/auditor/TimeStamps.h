#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Demo {

/// The time stamp that a line begins with, "2026-01-31 09:05:07" (or with a T in the middle);
/// empty if there is none. Time stamps compare as texts.
std::string timeStampOf(std::string_view line);

} // namespace Demo
