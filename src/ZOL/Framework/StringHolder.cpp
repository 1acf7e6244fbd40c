#include "ZOL/Framework/StringHolder.h"

#include "ZOL/Framework/HeapString.h"

namespace ZOL::Framework {

StringHolder::StringHolder() : holder_(new HeapString) {}

StringHolder::StringHolder(const char* text) : holder_(new HeapString{text}) {}

StringHolder::StringHolder(const StringHolder& other) : holder_(new HeapString(*other.holder_)) {}

StringHolder::~StringHolder() {
    delete holder_;
}

const StringHolder& StringHolder::operator=(const StringHolder& other) {
    holder_->text = other.holder_->text;
    return *this;
}

const StringHolder& StringHolder::operator+=(const StringHolder& other) {
    holder_->text += other.holder_->text;
    return *this;
}

const char* StringHolder::c_str() const {
    return holder_->text.c_str();
}

} // namespace ZOL::Framework
