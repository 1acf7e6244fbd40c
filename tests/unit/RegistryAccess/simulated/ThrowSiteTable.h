#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace support {

enum class Condition {
    NoHandle,
    Denied,      ///< the platform answers 5
    NoMoreItems, ///< the platform answers 259
    OtherResult, ///< any other code but 0 that has no condition of its own at this place
    WrongType
};

/// One place where the registry access throws.
struct ThrowSite {
    int line;
    std::string operation;
    std::string function; ///< the platform's, whose answer decides
    Condition condition;
    std::string errorClass;
    std::string message;
};

/// How a test's name shows it.
inline void PrintTo(const ThrowSite& site, std::ostream* stream) {
    *stream << site.line;
}

/// All there are.
const std::vector<ThrowSite>& throwSites();

/// Null if that is no failure there.
const ThrowSite* findThrowSite(const std::string& operation, const std::string& function,
                               Condition condition);

} // namespace support
