#pragma once

#include <string>
#include <vector>

namespace support {

struct ProgramResult {
    int exitCode;
    std::string output; ///< in the ANSI code page, with bare line feeds
};

/// Runs the system's reg.exe. The arguments must not end with quotation marks or backslashes, which
/// programs parse differently.
ProgramResult runReg(const std::vector<std::string>& arguments);

/// Imports a registration file of the old 8-bit format, given without its first line, with regedit.
/// Throws if it does not.
void importWithRegedit(const std::string& lines);

/// The same with a file of the 16-bit format.
void importWithRegedit(const std::wstring& lines);

} // namespace support
