#include "ZOL/Framework/Exceptions/FrameworkException.h"

#include <utility>

#include "ZOL/Framework/HeapString.h"

namespace ZOL::Framework::Exceptions {

FrameworkException::FrameworkException() : message_(new HeapString) {}

FrameworkException::FrameworkException(const char* message) : message_(new HeapString{message}) {}

FrameworkException::FrameworkException(const FrameworkException& other)
    : message_(new HeapString(*other.message_)) {}

FrameworkException::~FrameworkException() {
    delete message_;
}

const FrameworkException& FrameworkException::operator=(const FrameworkException& other) {
    // Copied first: a failed copy changes nothing, and other may be this object.
    HeapString* const copy = new HeapString(*other.message_);
    delete std::exchange(message_, copy);
    return *this;
}

const char* FrameworkException::message() const {
    return message_->text.c_str();
}

} // namespace ZOL::Framework::Exceptions
