#pragma once

namespace ZOL::Backends {

/// As long as one lives, a write on its thread fails where the system would end the process: a pipe
/// or a connection without a reader, a file beyond the process's limit of size.
class NoSignals {
public:
    NoSignals() noexcept;
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;
    ~NoSignals();

private:
    bool heldPipe_ = false;
    bool heldSize_ = false;
};

} // namespace ZOL::Backends
