#pragma once

#include <atomic>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// Counts what could not be written, and says so twice: when it begins, and when it is over or the
/// process ends.
class Loss {
public:
    explicit Loss(std::string_view backend) : backend_(backend) {}

    /// One more message is lost. The reason is told of the first one only.
    void add(std::string_view reason) noexcept;

    /// A message has been written.
    void end() noexcept;

    /// The process ends with a loss, perhaps. The one call that may come at the same time as
    /// others.
    void tell() const noexcept;

private:
    std::string backend_;
    std::atomic<unsigned long long> count_ = 0;
};

} // namespace ZOL::Backends
