#include "Diagnostics.h"

#include <exception>
#include <new>

#include <spdlog/details/os.h>

#include "StandardError.h"
#include "Text.h"

namespace ZOL::Backends {

bool reportToStderr(std::string_view backend, std::string_view text) noexcept {
    try {
        // One call, so that output of other threads cannot split the line.
        std::string line = "ZOL back end ";
        appendEscaped(line, backend);
        line += ": ";
        appendEscaped(line, text);
        line += spdlog::details::os::default_eol;
        writeToStandardError(line);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    } catch (const std::exception&) {
        return true; // standard error cannot be written: the report is discarded
    }
}

void DropCounter::add(std::string_view reason) noexcept {
    if (++count_ > 1) {
        return;
    }
    try {
        reportToStderr(backend_, "messages are being lost: " + std::string(reason));
    } catch (...) {
        reportToStderr(backend_, "messages are being lost");
    }
}

void DropCounter::reportAndReset() noexcept {
    try {
        if (reportToStderr(backend_, "works again, lost messages: " + std::to_string(count_))) {
            count_ = 0;
        }
    } catch (const std::bad_alloc&) {
        // The count is kept for the next report.
    }
}

void DropCounter::reportAtExit() const noexcept {
    if (count_ == 0) {
        return;
    }
    try {
        reportToStderr(backend_, "the process ends, lost messages: " + std::to_string(count_));
    } catch (...) {
        reportToStderr(backend_, "the process ends, and messages are lost");
    }
}

} // namespace ZOL::Backends
