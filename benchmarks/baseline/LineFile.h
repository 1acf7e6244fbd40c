#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include <boost/thread/recursive_mutex.hpp>

#include "Baseline.h"

namespace benchmarks {

/// A file that is open for appending, with nothing between the caller and the system.
class AppendedFile {
public:
    explicit AppendedFile(const char* path);
    AppendedFile(const AppendedFile&) = delete;
    AppendedFile& operator=(const AppendedFile&) = delete;
    ~AppendedFile();

    /// Passes the bytes to the system in one call. Throws std::runtime_error if it does not take
    /// all.
    void append(std::string_view bytes);

    static const std::string_view lineEnd; ///< that of the platform

private:
    std::intptr_t handle_;
};

/// The floor of a log file: reads the clock once for a line and formats it by hand, under a
/// recursive lock. The date is formatted once in a second.
class LineFile {
public:
    /// @param isFlushed whether each line is passed to the system at once, and not a buffer of
    /// them.
    BENCHMARKS_BASELINE LineFile(const char* path, bool isFlushed);
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;
    BENCHMARKS_BASELINE ~LineFile();

    /// @param logger and text must fit into a line of 512 bytes.
    BENCHMARKS_BASELINE void logInfo(const char* logger, const char* text);

private:
    static constexpr std::size_t dateSize = sizeof("2026-01-31 09:05:07") - 1;
    static constexpr std::size_t bufferSize = std::size_t{64} * 1024;

    void formatDate(std::chrono::seconds second);
    void buffer(std::string_view line);
    void flush();

    boost::recursive_mutex lock_;
    AppendedFile file_;
    std::chrono::seconds second_ = std::chrono::seconds::min(); ///< of the date
    char date_[dateSize + 1] = {};
    std::unique_ptr<char[]> buffer_; ///< null if each line is flushed
    std::size_t buffered_ = 0;
};

} // namespace benchmarks
