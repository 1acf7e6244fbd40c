#pragma once

#include <ios>
#include <sstream>
#include <string>
#include <typeinfo>

#include <boost/core/demangle.hpp>

// The text that what() of an error returns; the logging exceptions use it too. It is inline and in
// this folder because the registry code links without the rest of the project. No throw expression
// here: in a file that exports a class, mingw-w64 would export the type information of what is
// thrown.

namespace ZOL::RegistryAccess {

/// Returns "class " and the fully qualified name of the type, on every compiler, or an empty text
/// if there is no memory to demangle the name. Throws std::bad_alloc.
inline std::string displayName(const std::type_info& type) {
    const boost::core::scoped_demangled_name demangled(type.name());
    if (demangled.get() == nullptr) {
        return {};
    }
    // Visual C++ puts the keyword of the declaration in front of the name.
    std::string name = demangled.get();
    for (const std::string keyword : {"class ", "struct "}) {
        if (name.compare(0, keyword.size(), keyword) == 0) {
            name.erase(0, keyword.size());
        }
    }
    return "class " + name;
}

/// Returns "<display name>' (<filename>:<lineNumber>): <message>", or an empty text if there is no
/// display name. Throws std::bad_alloc.
inline std::string errorText(const std::type_info& type, const std::string& filename,
                             int lineNumber, const std::string& message) {
    const std::string name = displayName(type);
    if (name.empty()) {
        return {};
    }
    // The stream starts to write at the first character, so the name overwrites the initial
    // contents. The text is required to begin with the name and to have a single quote.
    std::ostringstream text("Exception '", std::ios_base::out);
    text.exceptions(std::ios_base::badbit); // rethrows std::bad_alloc: the text is never truncated
    text << name << "' (" << filename << ":" << lineNumber << "): " << message;
    return text.str();
}

} // namespace ZOL::RegistryAccess
