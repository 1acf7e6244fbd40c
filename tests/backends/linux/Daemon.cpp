#include "Daemon.h"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

Daemon::Daemon(const std::vector<std::string>& command, const std::string& output) {
    std::vector<char*> arguments;
    arguments.reserve(command.size() + 1);
    for (const std::string& argument : command) {
        arguments.push_back(const_cast<char*>(argument.c_str()));
    }
    arguments.push_back(nullptr);
    const int file = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    id_ = fork();
    if (id_ == -1) {
        throw std::system_error(errno, std::generic_category(), "fork");
    }
    if (id_ == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        dup2(file, STDOUT_FILENO);
        dup2(file, STDERR_FILENO);
        execv(arguments[0], arguments.data());
        _exit(127);
    }
    close(file);
}

Daemon::~Daemon() {
    kill(id_, SIGKILL);
    waitpid(id_, nullptr, 0);
}
