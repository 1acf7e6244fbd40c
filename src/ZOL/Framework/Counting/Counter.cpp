#include "ZOL/Framework/Counting/Counter.h"

#include <memory>
#include <string>
#include <utility>

#include "ZOL/Framework/Counting/CounterReaper.h"
#include "ZOL/Framework/StaticObjects.h"

namespace ZOL::Framework::Counting {

Counter::Counter() : value_(0) {}

Counter& Counter::counter(const char* name) {
    std::string key(name);
    const auto known = counters_.find(key);
    if (known != counters_.end()) {
        return *known->second;
    }

    const auto discard = [](Counter* counter) {
        delete counter;
    };
    std::unique_ptr<Counter, decltype(discard)> counter(new Counter, discard);
    counters_.emplace(std::move(key), counter.get());
    return *counter.release();
}

int Counter::next() {
    const std::int32_t value = value_;
    // Unsigned arithmetic: signed overflow after the largest value would be undefined.
    value_ = static_cast<std::int32_t>(static_cast<std::uint32_t>(value) + 1U);
    return value;
}

void Counter::reset() {
    value_ = 0;
}

Counter& Counter::operator=(const Counter& other) {
    value_ = other.value_;
    return *this;
}

CounterReaper::~CounterReaper() {
    for (const auto& [name, counter] : counters_) {
        delete counter;
    }
}

} // namespace ZOL::Framework::Counting
