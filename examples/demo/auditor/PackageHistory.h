#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace Demo {

/// Follows what a package manager's log tells of its packages.
class PackageHistory {
public:
    enum class Event { none, installed, upgraded, removed };

    struct Step {
        Event event;
        std::string package;
    };

    struct State {
        std::string name;
        std::size_t lineNumber;
    };

    /// Takes the next line, without its time stamp: "install <package> <old> <new>", likewise
    /// upgrade and remove, or "status <state> <package> <version>". Others tell nothing.
    Step take(std::string_view entry, std::size_t lineNumber);

    /// The packages whose latest state is one between two, such as half-configured.
    const std::map<std::string, State>& unfinished() const { return unfinished_; }

private:
    std::map<std::string, State> unfinished_;
};

} // namespace Demo
