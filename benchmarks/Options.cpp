#include "Options.h"

#include <charconv>
#include <stdexcept>
#include <string_view>

namespace benchmarks {

namespace {

int numberIn(std::string_view text) {
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number < 1) {
        throw std::runtime_error("not a number from 1 on: " + std::string(text));
    }
    return number;
}

} // namespace

Options readOptions(int count, const char* const* arguments) {
    Options options;
    for (int i = 1; i < count; i += 2) {
        const std::string_view name = arguments[i];
        if (i + 1 == count) {
            throw std::runtime_error(std::string(name) + " lacks its value");
        }
        const char* const value = arguments[i + 1];
        if (name == "--only") {
            options.only = value;
        } else if (name == "--repetitions") {
            options.repetitions = numberIn(value);
        } else if (name == "--milliseconds") {
            options.milliseconds = numberIn(value);
        } else {
            throw std::runtime_error("unknown: " + std::string(name));
        }
    }
    return options;
}

} // namespace benchmarks
