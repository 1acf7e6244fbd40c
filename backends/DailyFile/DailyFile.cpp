// The DailyFile back end: writes each message as one line to a file, which is renamed at the end of
// the day that it holds: zol.log, and before it zol_2026-01-31.20260131T230000Z.000.log...

#include "SinkBackend.h"
#include "files/FileSettings.h"
#include "files/FileWriter.h"

using namespace ZOL::Backends;

namespace {

WriterOptions readOptions(const Settings& settings) {
    RotatingLogSettings fileSettings = readFileSettings(settings);
    fileSettings.hasDayInName = true;
    return writerOptions(fileSettings);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("DailyFile", readOptions);
}
