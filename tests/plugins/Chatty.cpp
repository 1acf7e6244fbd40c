// Logs while its library is being loaded, from a static initialiser, and from its entry point: both
// run with the logging lock held by the loading thread.

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

struct LogsAtLoad {
    LogsAtLoad() { Logger::getLogger("Chatty")->info("from the initialiser"); }
};

const LogsAtLoad logsAtLoad;

class DecliningBackend final : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return nullptr; }
};

} // namespace

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    Logger::getLogger("Chatty")->info("from createBackend");
    static DecliningBackend backend;
    return &backend;
}
