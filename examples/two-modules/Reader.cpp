// The module TwoModulesReader: reads a file and logs each of its lines.

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

#include <sys/stat.h>

#include "Modules.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"

using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Exceptions::FrameworkException;

namespace TwoModules {

namespace {

std::string filePath;
std::ifstream file;
std::string line;

[[noreturn]] void throwUnreadable(const std::string& reason) {
    throw FrameworkException(("cannot read '" + filePath + "': " + reason).c_str());
}

bool isFolder(const char* path) {
    struct stat status = {};
    return stat(path, &status) == 0 && (status.st_mode & S_IFMT) == S_IFDIR;
}

} // namespace

void openFile(const char* path) {
    filePath = path;
    if (isFolder(path)) {
        throwUnreadable("it is a folder");
    }
    file.open(path, std::ios_base::binary); // a Windows runtime ends a text file at byte 26
    if (!file) {
        throwUnreadable(std::generic_category().message(errno));
    }
    setProperty(lineEndProperty, "none");
}

const char* readLine() {
    if (!std::getline(file, line)) {
        if (file.bad()) {
            throwUnreadable("reading failed");
        }
        return nullptr;
    }
    const bool hasReturn = !line.empty() && line.back() == '\r';
    if (hasReturn) {
        line.pop_back();
    }
    if (++position().line == 1 && !file.eof()) {
        setProperty(lineEndProperty, hasReturn ? "CR LF" : "LF");
    }
    const bool isAlert = line.find(readProperty(alertWordProperty)) != std::string::npos;
    message(readerLogger, isAlert ? LOG_LEVEL_WARNING : LOG_LEVEL_INFO) << line;
    return line.c_str();
}

View viewOfReader() {
    return viewOfThisModule();
}

} // namespace TwoModules
