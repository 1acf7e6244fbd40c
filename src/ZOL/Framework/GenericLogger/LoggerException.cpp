#include "ZOL/Framework/GenericLogger/LoggerException.h"

#include <typeinfo>

#include "ZOL/Framework/GenericLogger/LoggerExceptionImpl.h"
#include "ZOL/RegistryAccess/ErrorText.h"

namespace ZOL::Framework::GenericLogger {

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
            impl_->whatText_ = RegistryAccess::errorText(typeid(*this), impl_->filename_,
                                                         impl_->lineNumber_, impl_->message_);
        } catch (...) {
            // The text stays empty; the next call tries again.
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
