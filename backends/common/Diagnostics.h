#pragma once

#include <atomic>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// Writes one line about a back end to standard error. Discards it if that fails. Any thread may
/// call it. False if there is no memory for the line.
bool reportToStderr(std::string_view backend, std::string_view text) noexcept;

/// Counts dropped messages and reports them: the first one with its reason, and the number of them
/// when a message is written again or when the process ends.
///
/// Calls are serialised by the caller, except reportAtExit.
class DropCounter {
public:
    explicit DropCounter(std::string_view backend) : backend_(backend) {}

    /// A message is dropped. The reason is reported for the first message only.
    void add(std::string_view reason) noexcept;

    /// A message is dropped because memory is short.
    void addOutOfMemory() noexcept { add("there is no memory for them"); }

    /// A message has been written: reports the drops before it, and starts at 0 again. If there is
    /// no memory for the report, it is left to the next call.
    void reset() noexcept {
        if (count_ != 0) {
            reportAndReset();
        }
    }

    /// Reports the drops since the last reset. May run at the same time as other calls.
    void reportAtExit() const noexcept;

private:
    void reportAndReset() noexcept;

    std::string backend_;
    std::atomic<unsigned long long> count_ = 0;
};

} // namespace ZOL::Backends
