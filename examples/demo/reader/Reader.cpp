#include "reader/Reader.h"

#include <cerrno>
#include <filesystem>
#include <ios>
#include <stdexcept>
#include <system_error>

#include "reader/CrisisNote.h"
#include "reader/LineLevel.h"
#include "shared/Properties.h"

using namespace ZOL::Framework::GenericLogger;

namespace Demo {

namespace {

// Asked for the sake of a clear message only: a file name that this runtime cannot look up may
// still be one that it can open.
bool isFolder(const char* path) {
    try {
        return std::filesystem::is_directory(path);
    } catch (const std::system_error&) {
        return false;
    }
}

[[noreturn]] void throwUnreadable(const std::string& path, const std::string& reason) {
    const std::string failure = "cannot read '" + path + "': " + reason;
    throw std::runtime_error(failure + " (" + noteInCrisisLog(failure) + ")");
}

} // namespace

Reader::Reader(const char* path)
    : path_(path), logger_(Logger::getLogger(readerLoggerName)), position_(position()) {
    if (isFolder(path)) {
        throwUnreadable(path_, "it is a folder");
    }
    file_.open(path, std::ios_base::binary); // or a Windows runtime would stop at byte 26
    if (!file_) {
        throwUnreadable(path_, std::generic_category().message(errno));
    }
    setProperty(lineEndProperty, "none");
}

bool Reader::next(Line& line) {
    if (!std::getline(file_, text_)) {
        if (file_.bad()) {
            throwUnreadable(path_, "reading failed on the way");
        }
        return false;
    }
    const bool hasReturn = !text_.empty() && text_.back() == '\r';
    if (hasReturn) {
        text_.pop_back();
    }
    ++position_.line;
    if (position_.line == 1 && !file_.eof()) {
        setProperty(lineEndProperty, hasReturn ? "CR LF" : "LF");
    }
    line = {text_.data(), text_.size(), levelOf(text_)};

    // A message is zero-terminated: of a line with a zero byte, what stands before it is logged.
    logger_->log(line.level) << text_;
    counts_.count(line.level);
    return true;
}

} // namespace Demo
