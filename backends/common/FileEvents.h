#pragma once

#include <atomic>
#include <memory>

#include <spdlog/common.h>

#include "ScopedSignalBlock.h"

namespace ZOL::Backends {

/// Prepares the files that spdlog's file sinks open. Copies share their state.
class FileEvents {
public:
    /// Handlers for the sink. An opened file is kept apart from the standard streams. If it ends
    /// without a line end, for example because the disk was full, the line is terminated before
    /// anything is appended.
    spdlog::file_event_handlers handlers() const;

    /// The signals that writing to the file can raise at the moment.
    WriteSignals signals() const noexcept { return {*mayBePipe_, isFileSizeLimited()}; }

private:
    // True until a file is open: the first message opens the file and writes to it.
    std::shared_ptr<std::atomic<bool>> mayBePipe_ = std::make_shared<std::atomic<bool>>(true);
};

} // namespace ZOL::Backends
