#include "host/Run.h"

#include <limits>

#include "host/AuditorModule.h"
#include "host/InstalledBackend.h"
#include "host/ReaderModule.h"
#include "shared/Properties.h"

using ZOL::Gadgets::DLL::DLLHolder;

namespace Demo {

namespace {

// Enough to fill the caches of both loggers, and some more.
constexpr std::size_t linesBeforeBackend = 500;
constexpr std::size_t allLines = std::numeric_limits<std::size_t>::max();

void processLines(std::size_t most, const ReaderModule& reader, const AuditorModule& auditor,
                  RunReport& report) {
    Line line{};
    for (std::size_t i = 0; i < most && reader.next(line); ++i) {
        ++report.lines;
        ++report.linesByLevel[line.level];
        auditor.check(line);
    }
}

BackendFindings findingsOf(ObservedBackend& backend) {
    BackendFindings findings;
    findings.installed = isInstalled(backend);
    for (const auto& [logger, channel] : backend.channels()) {
        findings.channels[logger] = channel != nullptr;
    }
    return findings;
}

} // namespace

RunReport run(const Options& options, const DLLHolder& readerLibrary,
              const DLLHolder& auditorLibrary) {
    setProperty(alertLevelProperty, options.alertLevel);
    const ReaderModule reader(readerLibrary, options.file);
    const AuditorModule auditor(auditorLibrary);
    RunReport report;

    processLines(linesBeforeBackend, reader, auditor, report);
    report.readerMessages.beforeBackend = report.lines;
    report.auditorMessages.beforeBackend = auditor.totals().messages;

    InstalledBackend backend(options.backend);
    processLines(allLines, reader, auditor, report);
    auditor.finish();

    report.backend = findingsOf(backend.observed());
    report.audit = auditor.totals();
    report.readerMessages.all = report.lines;
    report.auditorMessages.all = report.audit.messages;
    report.views = {viewOfThisSide(), reader.view(), auditor.view()};
    return report;
}

} // namespace Demo
