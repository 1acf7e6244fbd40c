// The RotatingFile back end: writes each message as one line to a file, which is renamed when it
// has reached its size: zol.log, and before it zol.20260131T090507Z.000.log...

#include "SinkBackend.h"
#include "files/FileSettings.h"
#include "files/FileWriter.h"

using namespace ZOL::Backends;

namespace {

WriterOptions readOptions(const Settings& settings) {
    return writerOptions(readFileSettings(settings));
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("RotatingFile", readOptions);
}
