#include "LastingSink.h"

#include <exception>
#include <utility>

#include <spdlog/pattern_formatter.h>

#include "NoSignals.h"

namespace ZOL::Backends {

namespace {

constexpr const char* notYet = "it is not time yet to try again";
constexpr const char* unknownReason = "for a reason unknown";

} // namespace

LastingSink::LastingSink(std::string_view backend, SinkMaker make, std::string pattern,
                         std::string lineEnd, std::chrono::milliseconds pause)
    : make_(std::move(make)),
      pattern_(std::move(pattern)),
      lineEnd_(std::move(lineEnd)),
      pause_(pause),
      loss_(backend) {}

void LastingSink::open() {
    try {
        sink_ = make_();
        sink_->set_formatter(std::make_unique<spdlog::pattern_formatter>(
            pattern_, spdlog::pattern_time_type::local, lineEnd_));
    } catch (...) {
        sink_.reset();
        nextOpening_ = Clock::now() + pause_; // from its end: an attempt may take its time
        throw;
    }
    nextOpening_ = Clock::now() + pause_;
}

void LastingSink::write(const spdlog::details::log_msg& message) noexcept {
    const NoSignals noSignals;
    std::string reason;
    try {
        // A sink that fails after it worked for a while gets a second chance at once: a collector
        // may have been restarted, a file moved away.
        for (int chance = 0; chance < 2; ++chance) {
            if (sink_ == nullptr) {
                if (Clock::now() < nextOpening_) {
                    loss_.add(reason.empty() ? notYet : reason);
                    return;
                }
                open();
            }
            try {
                sink_->log(message);
                sink_->flush();
                loss_.end();
                return;
            } catch (const std::exception& error) {
                sink_.reset(); // what state a sink is in after a failure is not to be relied on
                reason = error.what();
            }
        }
        loss_.add(reason);
    } catch (const std::exception& error) {
        loss_.add(error.what());
    } catch (...) {
        sink_.reset();
        loss_.add(unknownReason);
    }
}

} // namespace ZOL::Backends
