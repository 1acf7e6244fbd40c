#include "host/Options.h"

#include <stdexcept>
#include <string_view>

namespace Demo {

namespace {

[[noreturn]] void throwUsage() {
    throw std::runtime_error(
        "usage: DemoHost [--backend NAME] [--alert-level LEVEL] [--registry KEY] FILE");
}

} // namespace

Options parseOptions(int argumentCount, const char* const* arguments) {
    Options options{nullptr, "Console", "warning", nullptr};
    int next = 1;
    const auto valueOfOption = [&] {
        if (next == argumentCount) {
            throwUsage();
        }
        return arguments[next++];
    };
    while (next < argumentCount) {
        const char* const argument = arguments[next++];
        if (std::string_view(argument) == "--backend") {
            options.backend = valueOfOption();
        } else if (std::string_view(argument) == "--alert-level") {
            options.alertLevel = valueOfOption();
        } else if (std::string_view(argument) == "--registry") {
            options.registryKey = valueOfOption();
        } else if (options.file == nullptr) {
            options.file = argument;
        } else {
            throwUsage();
        }
    }
    if (options.file == nullptr) {
        throwUsage();
    }
    return options;
}

} // namespace Demo
