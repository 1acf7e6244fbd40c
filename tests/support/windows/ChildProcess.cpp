#include "ChildProcess.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>

#include <windows.h>

namespace support {

namespace {

HANDLE handleOf(std::intptr_t process) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the C runtime has handles as integers
    return reinterpret_cast<HANDLE>(process);
}

/// Ends its processes when its last handle is closed, at the latest when this process ends.
HANDLE makeJob() {
    auto* const job = CreateJobObjectA(nullptr, nullptr);
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
    return job;
}

bool start(const std::string& program, std::string line, PROCESS_INFORMATION& information) {
    STARTUPINFOA startup = {};
    startup.cb = sizeof(startup);
    return CreateProcessA(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                          nullptr, &startup, &information) != FALSE;
}

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
    std::string line;
    for (const std::string& argument : command) {
        line += (line.empty() ? "\"" : " \"") + argument + "\"";
    }
    PROCESS_INFORMATION information = {};
    // Wine was seen to fail here once, on a busy machine.
    if (!start(command.front(), line, information)) {
        const DWORD error = GetLastError();
        std::cerr << "cannot start " << command.front() << ", error " << error
                  << "; trying again\n";
        if (!start(command.front(), line, information)) {
            throw std::runtime_error("cannot start " + command.front() + ", error " +
                                     std::to_string(GetLastError()));
        }
    }
    static auto* const job = makeJob();
    AssignProcessToJobObject(job, information.hProcess);
    CloseHandle(information.hThread);
    process_ = reinterpret_cast<std::intptr_t>(information.hProcess);
}

ChildProcess::~ChildProcess() {
    wait();
    CloseHandle(handleOf(process_));
}

int ChildProcess::wait() {
    if (!waitedFor_) {
        waitedFor_ = true;
        DWORD code = 1;
        WaitForSingleObject(handleOf(process_), INFINITE);
        GetExitCodeProcess(handleOf(process_), &code);
        exitCode_ = static_cast<int>(code);
    }
    return exitCode_;
}

bool ChildProcess::endsWithin(std::chrono::milliseconds time) {
    return waitedFor_ || WaitForSingleObject(handleOf(process_),
                                             static_cast<DWORD>(time.count())) == WAIT_OBJECT_0;
}

void ChildProcess::kill() {
    TerminateProcess(handleOf(process_), 1);
    wait();
}

void ChildProcess::endWithParent() {
    // The parent's job has it already.
}

std::string ChildProcess::thisProgram() {
    std::string file(MAX_PATH, '\0');
    file.resize(GetModuleFileNameA(nullptr, file.data(), MAX_PATH));
    return file;
}

std::string ChildProcess::program(const std::string& name) {
    return (std::filesystem::path(thisProgram()).parent_path() / (name + ".exe")).string();
}

void ChildProcess::setEnvironment(const char* name, const char* value) {
    _putenv_s(name, value);
    SetEnvironmentVariableA(name, value);
}

std::string ChildProcess::environment(const char* name) {
    std::string value(GetEnvironmentVariableA(name, nullptr, 0), '\0');
    value.resize(GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size())));
    return value;
}

} // namespace support
