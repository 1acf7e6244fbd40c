#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <spdlog/common.h>

namespace ZOL::Backends {

/// A text in UTF-8, of which one part has the colour of a level.
struct ColouredText {
    std::string_view text;
    std::size_t begin; ///< of the coloured part
    std::size_t end;
    spdlog::level::level_enum level;
};

/// Writes a text in UTF-8 to standard error as it is at the moment, in one system call if possible.
/// A Windows console gets UTF-16. On Linux, a text after one that was written only in part begins
/// on a new line. A Windows process without standard error discards the text.
///
/// Throws std::runtime_error after a failure, also if standard error is a full pipe that does not
/// block. Raises no signal. Any thread may call it.
void writeToStandardError(std::string_view text);

/// The same with a coloured part: by attributes on a Windows console, by escape codes elsewhere.
void writeToStandardError(const ColouredText& text);

/// Whether standard error is a terminal that shows colours.
bool standardErrorHasColours();

/// The text with the escape codes of its colour.
std::string withEscapeCodes(const ColouredText& text);

} // namespace ZOL::Backends
