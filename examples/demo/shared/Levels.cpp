#include "shared/Levels.h"

#include <algorithm>
#include <stdexcept>
#include <string>

using ZOL::Framework::GenericLogger::LoggingLevel;

namespace Demo {

LoggingLevel levelNamed(std::string_view name) {
    const auto* const named =
        std::find_if(std::begin(namedLevels), std::end(namedLevels),
                     [name](const NamedLevel& candidate) { return candidate.name == name; });
    if (named == std::end(namedLevels)) {
        throw std::runtime_error("there is no level '" + std::string(name) + "'");
    }
    return named->level;
}

} // namespace Demo
