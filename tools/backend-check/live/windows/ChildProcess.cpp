#include "live/ChildProcess.h"

#include <cstdlib>
#include <map>
#include <sstream>
#include <stdexcept>

#include <windows.h>

namespace backendcheck {

namespace {

constexpr DWORD pollInterval = 20; // milliseconds
constexpr SIZE_T maxMemory = SIZE_T{4} << 30U;
constexpr DWORD killedForTimeout = 0x5A4F4C;

/// As the C runtime splits a command line.
std::string quotedArgument(const std::string& argument) {
    std::string line = "\"";
    std::size_t backslashes = 0;
    for (const char c : argument) {
        if (c == '\\') {
            ++backslashes;
        } else {
            line.append(c == '"' ? 2 * backslashes + 1 : backslashes, '\\');
            line += c;
            backslashes = 0;
        }
    }
    return line.append(2 * backslashes, '\\') + '"';
}

HANDLE openInherited(const std::filesystem::path& file, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherited = {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    return CreateFileW(file.wstring().c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE,
                       &inherited, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

/// Its processes end when its handle is closed.
HANDLE makeJob() {
    auto* const job = CreateJobObjectW(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags =
        JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_PROCESS_MEMORY;
    limits.ProcessMemoryLimit = maxMemory;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
    return job;
}

std::string describe(DWORD code) {
    static const std::map<DWORD, const char*> texts = {
        {EXCEPTION_ACCESS_VIOLATION, "access violation, "},
        {EXCEPTION_STACK_OVERFLOW, "stack overflow, "},
        {EXCEPTION_ILLEGAL_INSTRUCTION, "illegal instruction, "},
        {EXCEPTION_INT_DIVIDE_BY_ZERO, "division by zero, "},
        {0xC0000374, "damaged heap, "},
        // Also of abort and std::terminate in the runtime library of Visual C++.
        {0xC0000409, "abort, damaged stack or invalid call, "},
        {0xE06D7363, "C++ exception, "}};
    const auto known = texts.find(code);
    std::ostringstream text;
    text << (known != texts.end() ? known->second : "") << "0x" << std::hex << std::uppercase
         << code;
    return text.str();
}

} // namespace

ChildEnd runChild(const std::vector<std::string>& command, const std::filesystem::path& output,
                  const std::filesystem::path& errors, const std::function<bool()>& isOverdue) {
    std::string line;
    for (const std::string& argument : command) {
        line += (line.empty() ? "" : " ") + quotedArgument(argument);
    }
    STARTUPINFOW startup = {};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = openInherited("NUL", GENERIC_READ, OPEN_EXISTING);
    startup.hStdOutput = openInherited(output, FILE_APPEND_DATA, OPEN_ALWAYS);
    startup.hStdError = openInherited(errors, FILE_APPEND_DATA, OPEN_ALWAYS);
    PROCESS_INFORMATION information = {};
    std::wstring wideLine = std::filesystem::u8path(line).wstring();
    const std::filesystem::path program = std::filesystem::u8path(command.front());
    const BOOL started = CreateProcessW(program.c_str(), wideLine.data(), nullptr, nullptr, TRUE,
                                        CREATE_SUSPENDED, nullptr, nullptr, &startup, &information);
    for (auto* const handle : {startup.hStdInput, startup.hStdOutput, startup.hStdError}) {
        CloseHandle(handle);
    }
    if (!started) {
        throw std::runtime_error("cannot start " + command.front());
    }
    auto* const job = makeJob();
    AssignProcessToJobObject(job, information.hProcess);
    ResumeThread(information.hThread);
    CloseHandle(information.hThread);

    ChildEnd end;
    while (WaitForSingleObject(information.hProcess, pollInterval) == WAIT_TIMEOUT) {
        if (isOverdue()) {
            end.inTime = false;
            TerminateProcess(information.hProcess, killedForTimeout);
            WaitForSingleObject(information.hProcess, INFINITE);
            break;
        }
    }
    DWORD code = 1;
    GetExitCodeProcess(information.hProcess, &code);
    CloseHandle(information.hProcess);
    CloseHandle(job);
    constexpr DWORD firstError = 0xC0000000;
    if (code >= firstError) {
        end.crash = describe(code);
        end.stackOverflow = code == static_cast<DWORD>(EXCEPTION_STACK_OVERFLOW);
    } else {
        end.code = static_cast<int>(code);
    }
    return end;
}

} // namespace backendcheck
