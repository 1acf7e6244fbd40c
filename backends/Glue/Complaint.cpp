#include "Complaint.h"

#include <cstdio>
#include <string>

#include "NoSignals.h"
#include "OneLine.h"

namespace ZOL::Backends {

void complain(std::string_view backend, std::string_view what) noexcept {
    const NoSignals noSignals;
    try {
        // In one piece, so that no other thread's output comes in between.
        const std::string line =
            "ZOL back end " + std::string(backend) + ": " + oneLine(what) + "\n";
        std::fputs(line.c_str(), stderr);
        std::fflush(stderr);
    } catch (...) {
        // Without memory for the line there is nobody left to tell.
    }
}

} // namespace ZOL::Backends
