#include "live/ChildProcess.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace backendcheck {

namespace {

constexpr std::chrono::milliseconds pollInterval{10};

const char* describe(int signal) {
    static const std::map<int, const char*> texts = {
        {SIGSEGV, "segmentation fault"},
        {SIGBUS, "bus error"},
        {SIGILL, "illegal instruction"},
        {SIGFPE, "arithmetic fault"},
        {SIGABRT, "abort"},
        {SIGPIPE, "SIGPIPE, a write to a connection that is closed"},
        {SIGXFSZ, "it writes without end"},
        {SIGKILL, "killed"},
        {SIGTERM, "terminated"}};
    const auto text = texts.find(signal);
    return text != texts.end() ? text->second : strsignal(signal);
}

} // namespace

ChildEnd runChild(const std::vector<std::string>& command, const std::filesystem::path& output,
                  const std::filesystem::path& errors, const std::function<bool()>& isOverdue) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    constexpr mode_t ownerOnly = 0600;
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, ownerOnly);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, ownerOnly);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETPGROUP);
    pid_t id = -1;
    const int failed =
        posix_spawn(&id, arguments[0], &actions, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    posix_spawn_file_actions_destroy(&actions);
    if (failed != 0) {
        throw std::runtime_error("cannot start " + command.front());
    }

    ChildEnd end;
    int status = 0;
    while (waitpid(id, &status, WNOHANG) == 0) {
        if (isOverdue()) {
            end.inTime = false;
            kill(-id, SIGKILL);
            waitpid(id, &status, 0);
            break;
        }
        std::this_thread::sleep_for(pollInterval);
    }
    kill(-id, SIGKILL); // processes that it started
    if (WIFSIGNALED(status)) {
        end.crash = describe(WTERMSIG(status));
    } else {
        end.code = WEXITSTATUS(status);
    }
    return end;
}

} // namespace backendcheck
