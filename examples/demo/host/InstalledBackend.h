#pragma once

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "host/ObservedBackend.h"

namespace Demo {

/// A back end that is installed for as long as the object lives, under observation.
class InstalledBackend {
public:
    /// Throws std::runtime_error if there is no such back end.
    explicit InstalledBackend(const char* name);
    InstalledBackend(const InstalledBackend&) = delete;
    InstalledBackend& operator=(const InstalledBackend&) = delete;
    ~InstalledBackend();

    ObservedBackend& observed() { return observed_; }

private:
    ObservedBackend observed_;
};

} // namespace Demo
