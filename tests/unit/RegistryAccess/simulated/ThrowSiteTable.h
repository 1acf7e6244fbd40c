#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace support {

enum class Condition {
    NoHandle,
    Denied,      ///< the platform returns 5
    NoMoreItems, ///< the platform returns 259
    OtherResult, ///< any other code but 0
    WrongType
};

/// A place where the registry access throws.
struct ThrowSite {
    int line;
    std::string operation;
    std::string function; ///< the platform's, whose result decides
    Condition condition;
    std::string errorClass;
    std::string message;
};

/// Its form in test names.
inline void PrintTo(const ThrowSite& site, std::ostream* stream) {
    *stream << site.line;
}

/// All of them.
const std::vector<ThrowSite>& throwSites();

/// Null if that result does not throw there.
const ThrowSite* findThrowSite(const std::string& operation, const std::string& function,
                               Condition condition);

} // namespace support
