#include "ZOL/RegistryAccess/Registry.h"

#include <ios>
#include <new>
#include <sstream>
#include <typeinfo>

#include <boost/core/demangle.hpp>

namespace ZOL::RegistryAccess {

struct Registry::GenericRegistryError::Record {
    std::string message;
    std::string filename;
    std::int32_t lineNumber;
    std::string whatText; // empty until the first what
};

namespace {

/// "class" and the full qualified name, on every compiler.
std::string displayName(const std::type_info& type) {
    const boost::core::scoped_demangled_name demangled(type.name());
    if (demangled.get() == nullptr) {
        throw std::bad_alloc();
    }
    // Some compilers' names carry the key word of the declaration already.
    std::string name = demangled.get();
    for (const std::string keyword : {"class ", "struct "}) {
        if (name.compare(0, keyword.size(), keyword) == 0) {
            name.erase(0, keyword.size());
        }
    }
    return "class " + name;
}

} // namespace

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
            // The stream writes from the first character on, so that the class replaces the seed.
            std::ostringstream text("Exception '", std::ios_base::out);
            text.exceptions(std::ios_base::badbit); // or half a text would stay for good
            text << displayName(typeid(*this)) << "' (" << record_->filename << ":"
                 << record_->lineNumber << "): " << record_->message;
            record_->whatText = text.str();
        } catch (...) {
            // The text stays empty, and the next call tries again.
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
