#include "StandardStreams.h"

namespace ZOL::Backends {

void keepApartFromStandardStreams(std::FILE*) noexcept {
    // The standard streams of Windows are handles, and a new file never gets one of theirs.
}

} // namespace ZOL::Backends
