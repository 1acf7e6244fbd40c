#include "Environment.h"

#include <cstdlib>

namespace backendcheck {

std::vector<std::string> programArguments(int count, char** arguments) {
    return {arguments + 1, arguments + count};
}

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

void setVariable(const char* name, const std::string& value) {
    setenv(name, value.c_str(), 1);
}

std::FILE* openForAppending(const std::filesystem::path& file) {
    return std::fopen(file.c_str(), "ab");
}

std::string nameForLoader(const std::string& name) {
    return name;
}

} // namespace backendcheck
