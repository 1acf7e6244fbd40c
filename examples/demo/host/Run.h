#pragma once

#include <cstddef>
#include <map>
#include <string>

#include "DemoModules.h"
#include "ZOL/Framework/GenericLogger/LoggingLevel.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"
#include "host/Comparison.h"
#include "host/Options.h"

namespace Demo {

/// How many messages a logger was given.
struct MessageCount {
    std::size_t beforeBackend;
    std::size_t all;
};

/// What the host could find out about the back end while it was there.
struct BackendFindings {
    bool installed = false;
    std::map<std::string, bool> channels; ///< by logger, whether it has a channel
};

struct RunReport {
    std::size_t lines = 0;
    std::map<ZOL::Framework::GenericLogger::LoggingLevel, std::size_t> linesByLevel;
    MessageCount readerMessages{};
    MessageCount auditorMessages{};
    AuditTotals audit{};
    BackendFindings backend;
    Views views{};
};

/// Has the reader read the file and the auditor check it: the first lines while no back end is
/// there, the rest with it installed.
RunReport run(const Options& options, const ZOL::Gadgets::DLL::DLLHolder& readerLibrary,
              const ZOL::Gadgets::DLL::DLLHolder& auditorLibrary);

} // namespace Demo
