#include "Process.h"

#include <cerrno> // program_invocation_short_name

#include <unistd.h>

#include "Text.h"

namespace ZOL::Backends {

std::string programName() {
    return escapedWord(program_invocation_short_name);
}

unsigned long processId() {
    return static_cast<unsigned long>(getpid());
}

std::string hostName() {
    char name[256] = ""; // longer than the longest name, and with a zero at its end
    gethostname(name, sizeof(name) - 1);
    return escapedWord(name);
}

} // namespace ZOL::Backends
