#include "OutsideProgram.h"

#include <algorithm>
#include <stdexcept>

#include <windows.h>

namespace support {

namespace {

/// A temporary file, deleted by the destructor.
class TemporaryFile {
public:
    explicit TemporaryFile(DWORD flags) {
        char folder[MAX_PATH + 1] = {};
        char name[MAX_PATH + 1] = {};
        if (GetTempPathA(sizeof(folder), folder) == 0 ||
            GetTempFileNameA(folder, "zol", 0, name) == 0) {
            throw std::runtime_error("cannot name a temporary file");
        }
        name_ = name;
        SECURITY_ATTRIBUTES inheritable = {sizeof(inheritable), nullptr, TRUE};
        handle_ =
            CreateFileA(name, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                        &inheritable, CREATE_ALWAYS, flags, nullptr);
        if (handle_ == INVALID_HANDLE_VALUE) {
            throw std::runtime_error("cannot make " + name_);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        close();
        DeleteFileA(name_.c_str());
    }

    const std::string& name() const { return name_; }
    HANDLE handle() const { return handle_; }

    void write(const void* data, std::size_t size) {
        DWORD written = 0;
        if (!WriteFile(handle_, data, static_cast<DWORD>(size), &written, nullptr) ||
            written != size) {
            throw std::runtime_error("cannot write " + name_);
        }
    }

    std::string content() {
        std::string text(GetFileSize(handle_, nullptr), '\0');
        DWORD length = 0;
        SetFilePointer(handle_, 0, nullptr, FILE_BEGIN);
        if (!ReadFile(handle_, text.data(), static_cast<DWORD>(text.size()), &length, nullptr)) {
            throw std::runtime_error("cannot read " + name_);
        }
        text.resize(length);
        return text;
    }

    void close() {
        if (handle_ != INVALID_HANDLE_VALUE) {
            CloseHandle(handle_);
            handle_ = INVALID_HANDLE_VALUE;
        }
    }

private:
    std::string name_;
    HANDLE handle_;
};

std::string windowsFolder() {
    char folder[MAX_PATH + 1] = {};
    GetWindowsDirectoryA(folder, sizeof(folder));
    return folder;
}

ProgramResult run(const std::string& program, const std::vector<std::string>& arguments) {
    std::string line = "\"" + program + "\"";
    for (const std::string& argument : arguments) {
        line += " \"" + argument + "\"";
    }
    TemporaryFile output(FILE_ATTRIBUTE_TEMPORARY);
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = output.handle();
    startup.hStdError = output.handle();
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &process)) {
        throw std::runtime_error("cannot start " + program);
    }
    DWORD exitCode = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return {static_cast<int>(exitCode), output.content()};
}

/// A console program that writes to a file writes in the console's code page.
std::string ansiFromConsole(const std::string& text) {
    std::wstring wide(text.size(), L'\0');
    wide.resize(static_cast<std::size_t>(
        MultiByteToWideChar(CP_OEMCP, 0, text.data(), static_cast<int>(text.size()), wide.data(),
                            static_cast<int>(wide.size()))));
    std::string converted(4 * wide.size(), '\0');
    converted.resize(static_cast<std::size_t>(
        WideCharToMultiByte(CP_ACP, 0, wide.data(), static_cast<int>(wide.size()), converted.data(),
                            static_cast<int>(converted.size()), nullptr, nullptr)));
    return converted;
}

void importFile(const void* content, std::size_t size) {
    TemporaryFile file(FILE_ATTRIBUTE_NORMAL);
    file.write(content, size);
    file.close();
    const ProgramResult result = run(windowsFolder() + "\\regedit.exe", {"/S", file.name()});
    if (result.exitCode != 0) {
        throw std::runtime_error("regedit gave " + std::to_string(result.exitCode) + ": " +
                                 result.output);
    }
}

} // namespace

ProgramResult runReg(const std::vector<std::string>& arguments) {
    ProgramResult result = run(windowsFolder() + "\\system32\\reg.exe", arguments);
    result.output.erase(std::remove(result.output.begin(), result.output.end(), '\r'),
                        result.output.end());
    result.output = ansiFromConsole(result.output);
    return result;
}

void importWithRegedit(const std::string& lines) {
    const std::string content = "REGEDIT4\n\n" + lines;
    importFile(content.data(), content.size());
}

void importWithRegedit(const std::wstring& lines) {
    const std::wstring content = L"\xFEFFWindows Registry Editor Version 5.00\n\n" + lines;
    importFile(content.data(), content.size() * sizeof(wchar_t));
}

} // namespace support
