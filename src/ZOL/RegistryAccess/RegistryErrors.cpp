#include "ZOL/RegistryAccess/Registry.h"

#include <typeinfo>

#include "ZOL/RegistryAccess/ErrorText.h"

namespace ZOL::RegistryAccess {

struct Registry::GenericRegistryError::Record {
    std::string message;
    std::string filename;
    std::int32_t lineNumber;
    std::string whatText; // empty until the first call of what
};

Registry::GenericRegistryError::GenericRegistryError(const char* message, const char* filename,
                                                     int lineNumber)
    : record_(new Record{message, filename, lineNumber, ""}) {}

Registry::GenericRegistryError::GenericRegistryError(const GenericRegistryError& other)
    : record_(new Record(*other.record_)) {}

Registry::GenericRegistryError&
Registry::GenericRegistryError::operator=(const GenericRegistryError& other) {
    *record_ = *other.record_;
    return *this;
}

Registry::GenericRegistryError::~GenericRegistryError() {
    delete record_;
}

const char* Registry::GenericRegistryError::what() const {
    if (record_->whatText.empty()) {
        try {
            record_->whatText =
                errorText(typeid(*this), record_->filename, record_->lineNumber, record_->message);
        } catch (...) {
            // The text stays empty; the next call tries again.
        }
    }
    return record_->whatText.c_str();
}

const char* Registry::GenericRegistryError::message() const {
    return record_->message.c_str();
}

const char* Registry::GenericRegistryError::filename() const {
    return record_->filename.c_str();
}

int Registry::GenericRegistryError::lineNumber() const {
    return record_->lineNumber;
}

} // namespace ZOL::RegistryAccess
