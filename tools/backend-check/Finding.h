#pragma once

#include <string>

namespace backendcheck {

enum class Result { Ok, Note, Wrong, NotReached };

/// What one check has to say.
struct Finding {
    std::string check;
    Result result;
    std::string text;
};

} // namespace backendcheck
