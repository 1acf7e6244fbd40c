#include "host/RegistryPart.h"

#include <stdexcept>

namespace Demo {

RegistryPart::RegistryPart(const Options& options) : options_(options) {
    if (options_.registryKey != nullptr) {
        throw std::runtime_error("--registry: there is no registry on this platform");
    }
}

void RegistryPart::run(std::ostream&, const RunReport&) const {}

} // namespace Demo
