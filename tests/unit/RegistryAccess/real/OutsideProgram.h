#pragma once

#include <string>
#include <vector>

namespace support {

struct ProgramResult {
    int exitCode;
    std::string output; ///< in the ANSI code page, with bare line feeds
};

/// Runs the system's reg.exe. The arguments have neither quotation marks nor backslashes at their
/// ends, which every program reads differently.
ProgramResult runReg(const std::vector<std::string>& arguments);

/// Has regedit take over a registration file of the old, 8-bit kind, given without its first line.
/// Throws if it does not.
void importWithRegedit(const std::string& lines);

/// Has regedit take over a registration file of the new, 16-bit kind, given without its first line.
void importWithRegedit(const std::wstring& lines);

} // namespace support
