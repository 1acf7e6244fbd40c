#include "host/Summary.h"

#include <iomanip>

#include "shared/Levels.h"

namespace Demo {

namespace {

// What a logger keeps while no back end is there; Logger.h tells of it.
constexpr std::size_t cacheCapacity = 101;

constexpr int nameWidth = 18;
constexpr int columnWidth = 18;

template <typename First, typename Second, typename Third, typename Fourth>
void printRow(std::ostream& out, const std::string& name, const First& first, const Second& second,
              const Third& third, const Fourth& fourth) {
    out << "  " << std::left << std::setw(nameWidth) << name << std::right //
        << std::setw(columnWidth) << first << std::setw(columnWidth) << second
        << std::setw(columnWidth) << third << std::setw(columnWidth) << fourth << '\n';
}

void printLines(std::ostream& out, const RunReport& report) {
    out << "Lines read: " << report.lines << '\n';
    for (const NamedLevel& named : namedLevels) {
        const auto counted = report.linesByLevel.find(named.level);
        const std::size_t lines = counted != report.linesByLevel.end() ? counted->second : 0;
        out << "  " << std::left << std::setw(nameWidth) << named.name << std::right
            << std::setw(columnWidth) << lines << '\n';
    }
}

void printFindings(std::ostream& out, const AuditTotals& audit) {
    out << "Findings:\n"
        << "  packages installed " << audit.installed << ", upgraded " << audit.upgraded
        << ", removed " << audit.removed << ", left unfinished " << audit.unfinished << '\n'
        << "  steps back in time " << audit.backwards << ", lines without a time stamp "
        << audit.untimed << '\n';
}

void printMessages(std::ostream& out, const char* logger, const MessageCount& messages) {
    const std::size_t lost =
        messages.beforeBackend > cacheCapacity ? messages.beforeBackend - cacheCapacity : 0;
    printRow(out, logger, messages.all, messages.beforeBackend, lost, messages.all - lost);
}

void printComparison(std::ostream& out, const ComparisonGroup& group) {
    out << group.title << ":\n";
    printRow(out, "", "in the host", "in DemoReader", "in DemoAuditor", "verdict");
    for (const Comparison& row : group.rows) {
        printRow(out, row.name, row.byHost, row.byReader, row.byAuditor, row.verdict);
    }
}

void printDiagnosis(std::ostream& out, const Options& options, const BackendFindings& backend) {
    out << "Back ends:\n"
        << "  " << options.backend << (backend.installed ? ": installed" : ": NOT INSTALLED")
        << '\n'
        << "Channels:\n";
    for (const auto& [logger, hasChannel] : backend.channels) {
        out << "  " << std::left << std::setw(nameWidth) << logger << std::right
            << (hasChannel ? "to " : "none to ") << options.backend << '\n';
    }
}

} // namespace

void printSummary(std::ostream& out, const Options& options, const RunReport& report) {
    out << "\nSummary of " << options.file << '\n';
    printLines(out, report);
    printFindings(out, report.audit);

    out << "Messages:\n";
    printRow(out, "", "logged", "before back end", "lost, cache full", "delivered");
    printMessages(out, readerLoggerName, report.readerMessages);
    printMessages(out, auditorLoggerName, report.auditorMessages);

    printDiagnosis(out, options, report.backend);

    for (const ComparisonGroup& group : compare(report.views)) {
        printComparison(out, group);
    }
}

} // namespace Demo
