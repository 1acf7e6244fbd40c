#pragma once

#include <cstddef>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"
#include "shared/View.h"

#if defined(_WIN32)
#define DEMO_EXPORT __declspec(dllexport)
#else
#define DEMO_EXPORT __attribute__((visibility("default")))
#endif

/// What the host and the modules of the demo agree on. Nobody links to these functions: the host
/// looks them up by name, with the declarations here for their types.
namespace Demo {

// Whoever asks for one of these names, host or module, gets the same logger.
constexpr const char* readerLoggerName = "demo.reader";
constexpr const char* auditorLoggerName = "demo.audit";

class Reader;
class Auditor;

struct Line {
    const char* text; ///< without its line end, and not zero-terminated; valid until the next line
    std::size_t length;
    ZOL::Framework::GenericLogger::LoggingLevel level; ///< that it was logged at
};

struct AuditTotals {
    std::size_t messages; ///< logged by the auditor so far
    std::size_t installed;
    std::size_t upgraded;
    std::size_t removed;
    std::size_t unfinished; ///< packages in a state between two, as things stand now
    std::size_t backwards;  ///< lines that are older than the one before
    std::size_t untimed;    ///< lines without a time stamp
};

extern "C" {

// Module DemoReader: reads a file and logs each line on the reader's logger.

/// Throws std::runtime_error, with the reason in one line, if the file cannot be read; the crisis
/// log then has the reason too, if it can be opened.
DEMO_EXPORT Reader* demoReaderOpen(const char* path);
DEMO_EXPORT void demoReaderClose(Reader* reader);

/// Logs the next line, as one message, and hands it out; false at the end of the file. Throws
/// std::runtime_error, as above, if the file cannot be read on.
DEMO_EXPORT bool demoReaderNext(Reader* reader, Line* line);

/// What the module gets under the shared names.
DEMO_EXPORT void demoReaderView(View* view);

// Module DemoAuditor: checks lines and logs what it finds on the auditor's logger.

DEMO_EXPORT Auditor* demoAuditorStart();
DEMO_EXPORT void demoAuditorStop(Auditor* auditor);

/// Checks the line that the reader has just read.
DEMO_EXPORT void demoAuditorCheck(Auditor* auditor, const char* text, std::size_t length);

/// Logs what can only be said after the last line.
DEMO_EXPORT void demoAuditorFinish(Auditor* auditor);

DEMO_EXPORT void demoAuditorTotals(const Auditor* auditor, AuditTotals* totals);

/// What the module gets under the shared names.
DEMO_EXPORT void demoAuditorView(View* view);

} // extern "C"

} // namespace Demo
