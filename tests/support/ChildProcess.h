#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace support {

/// A program started beside this one.
class ChildProcess {
public:
    /// @param command the program's file and its arguments, without quotation marks in them.
    explicit ChildProcess(const std::vector<std::string>& command);
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Waits for it.
    ~ChildProcess();

    /// Waits until it has ended and returns its exit code, never 0 if something else ended it.
    int wait();

    /// Whether it ends within a time.
    bool endsWithin(std::chrono::milliseconds time);

    /// Ends it at once, as a crash does, and waits for its end.
    void kill();

    /// Sees to it that this process, if it was started by this class, does not outlive its parent,
    /// however that ends.
    static void endWithParent();

    /// The file of the running program.
    static std::string thisProgram();

    /// The file of another program of this build.
    static std::string program(const std::string& name);

    /// Sets a variable of this process and of the ones it starts.
    static void setEnvironment(const char* name, const char* value);

    /// The value of a variable of this process, or an empty text.
    static std::string environment(const char* name);

private:
    std::intptr_t process_ = 0; // id or handle
    int exitCode_ = -1;
    bool waitedFor_ = false;
};

} // namespace support
