#include "ChildProcess.h"

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <thread>

#include <spawn.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace support {

namespace {

// Read at the start: after a change of the mount namespace, a program in a chroot gets a path that
// does not exist there.
const std::string startedProgram = std::filesystem::read_symlink("/proc/self/exe").string();

} // namespace

ChildProcess::ChildProcess(const std::vector<std::string>& command) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    pid_t id = -1;
    if (posix_spawn(&id, arguments[0], nullptr, nullptr, arguments.data(), environ) != 0) {
        throw std::runtime_error("cannot start " + command.front());
    }
    process_ = id;
}

ChildProcess::~ChildProcess() {
    wait();
}

int ChildProcess::wait() {
    if (!waitedFor_) {
        waitedFor_ = true;
        int status = 0;
        const auto id = static_cast<pid_t>(process_);
        if (waitpid(id, &status, 0) == id) {
            exitCode_ = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
        }
    }
    return exitCode_;
}

bool ChildProcess::endsWithin(std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    siginfo_t ended = {};
    while (!waitedFor_ && ended.si_pid == 0) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        // The process stays for wait().
        waitid(P_PID, static_cast<id_t>(process_), &ended, WEXITED | WNOHANG | WNOWAIT);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

void ChildProcess::kill() {
    if (!waitedFor_) {
        ::kill(static_cast<pid_t>(process_), SIGKILL);
        wait();
    }
}

void ChildProcess::endWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

std::string ChildProcess::thisProgram() {
    return startedProgram;
}

std::string ChildProcess::program(const std::string& name) {
    return (std::filesystem::path(thisProgram()).parent_path() / name).string();
}

void ChildProcess::setEnvironment(const char* name, const char* value) {
    setenv(name, value, 1);
}

std::string ChildProcess::environment(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace support
