#include "StandardStreams.h"

#include "Descriptors.h"

namespace ZOL::Backends {

void keepApartFromStandardStreams(std::FILE* file) noexcept {
    // Opening the file again would need its name, which may be that of another file by now.
    file->_fileno = aboveStandardStreams(fileno(file));
}

} // namespace ZOL::Backends
