#pragma once

#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <string>

#include <spdlog/common.h>

#include "Pattern.h"

namespace ZOL::Backends {

class DropCounter;

/// Writes the messages of a back end to where they go. Calls are serialised by the caller.
class RecordWriter {
public:
    RecordWriter() = default;
    RecordWriter(const RecordWriter&) = delete;
    RecordWriter& operator=(const RecordWriter&) = delete;
    virtual ~RecordWriter() = default;

    /// Writes one message. A message that cannot be written is counted as dropped.
    virtual void write(const Record& record) noexcept = 0;

    /// The process ends: hands on what is kept back. From now on, each message is handed on at
    /// once. Any thread may call it, at the same time as write and several times.
    virtual void finish() noexcept {}
};

/// What a writer has in common with all others: the form of its lines, and who counts its drops.
struct WriterContext {
    std::string backend;
    std::string pattern;
    spdlog::pattern_time_type timeType;
    DropCounter& drops; ///< outlives the writer
};

/// A limit for lines that is none.
constexpr std::size_t unlimitedLineBytes = std::numeric_limits<std::size_t>::max();

/// What differs from one back end to another.
struct WriterOptions {
    /// Makes a writer, which opens nothing before its first message.
    std::function<std::unique_ptr<RecordWriter>(const WriterContext& context)> factory;
    /// Limit for %v, which is "LEVEL [logger] text"; longer lines are truncated. Without a limit, a
    /// line that is too long for a sink would close it, and the next messages would be dropped.
    std::size_t maxLineBytes = unlimitedLineBytes;
    /// Whether the writer has a worker, which must be finished while the threads of the process
    /// run.
    bool hasWorker = false;
};

} // namespace ZOL::Backends
