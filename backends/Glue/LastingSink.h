#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include <spdlog/sinks/sink.h>

#include "Loss.h"

namespace ZOL::Backends {

/// Opens a sink, or throws.
using SinkMaker = std::function<std::unique_ptr<spdlog::sinks::sink>()>;

/// A sink that is opened anew when it fails, but not more often than the pause allows: between two
/// attempts, messages cost nothing and are counted as lost. Nothing here throws.
class LastingSink {
public:
    LastingSink(std::string_view backend, SinkMaker make, std::string pattern, std::string lineEnd,
                std::chrono::milliseconds pause);

    /// Writes a message through to where the sink leads.
    void write(const spdlog::details::log_msg& message) noexcept;

    /// Counts a message that did not even get here.
    void lose(std::string_view reason) noexcept { loss_.add(reason); }

    /// Says what would otherwise not be told any more.
    void sayFarewell() const noexcept { loss_.tell(); }

private:
    using Clock = std::chrono::steady_clock;

    void open();

    SinkMaker make_;
    std::string pattern_;
    std::string lineEnd_;
    Clock::duration pause_;
    Clock::time_point nextOpening_ = Clock::time_point::min();
    std::unique_ptr<spdlog::sinks::sink> sink_;
    Loss loss_;
};

} // namespace ZOL::Backends
