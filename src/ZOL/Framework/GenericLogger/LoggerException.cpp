#include "ZOL/Framework/GenericLogger/LoggerException.h"

#include <sstream>
#include <string>
#include <typeinfo>

#include "ZOL/Framework/GenericLogger/DisplayName.h"
#include "ZOL/Framework/GenericLogger/LoggerExceptionImpl.h"

namespace ZOL::Framework::GenericLogger {

namespace {

std::string describe(const std::type_info& type, const LoggerExceptionImpl& impl) {
    // The stream writes from the first character on, so that the type name replaces the seed.
    std::ostringstream text("Exception '", std::ios_base::out);
    text.exceptions(std::ios_base::badbit); // or it would keep half a text when memory is out
    text << displayName(type) << "' (" << impl.filename_ << ":" << impl.lineNumber_
         << "): " << impl.message_;
    return text.str();
}

} // namespace

LoggerException::LoggerException(const char* filename, int lineNumber)
    : impl_(new LoggerExceptionImpl{"", filename, lineNumber, ""}) {}

LoggerException::LoggerException(const char* message, const char* filename, int lineNumber)
    : impl_(new LoggerExceptionImpl{message, filename, lineNumber, ""}) {}

LoggerException::LoggerException(const LoggerException& other)
    : impl_(new LoggerExceptionImpl(*other.impl_)) {}

const LoggerException& LoggerException::operator=(const LoggerException& other) {
    *impl_ = *other.impl_;
    return *this;
}

LoggerException::~LoggerException() {
    delete impl_;
}

const char* LoggerException::message() const {
    return impl_->message_.c_str();
}

const char* LoggerException::what() const {
    if (impl_->whatText_.empty()) {
        try {
            impl_->whatText_ = describe(typeid(*this), *impl_);
        } catch (...) {
            // The text stays empty, and the next call tries again.
        }
    }
    return impl_->whatText_.c_str();
}

const char* LoggerException::filename() const {
    return impl_->filename_.c_str();
}

void LoggerException::filename(const char* filename) {
    impl_->filename_ = filename;
}

int LoggerException::lineNumber() const {
    return impl_->lineNumber_;
}

void LoggerException::lineNumber(int lineNumber) {
    impl_->lineNumber_ = lineNumber;
}

} // namespace ZOL::Framework::GenericLogger
