#include "auditor/Auditor.h"

#include "auditor/TimeStamps.h"
#include "shared/Properties.h"
#include "shared/WideText.h"

using namespace ZOL::Framework::GenericLogger;

namespace Demo {

Auditor::Auditor() : logger_(Logger::getLogger(auditorLoggerName)), position_(position()) {}

void Auditor::check(std::string_view line) {
    const std::string timeStamp = timeStampOf(line);
    if (timeStamp.empty()) {
        // Counted, and reported once at the end: in a file that is no log, it is every line.
        ++counted_.untimed;
        firstUntimed_ = firstUntimed_ == 0 ? position_.line : firstUntimed_;
    } else {
        checkTime(timeStamp);
        checkPackage(line.substr(timeStamp.size()));
    }
    message(LOG_LEVEL_TRACE) << "line " << position_.line << " checked";
}

void Auditor::finish() {
    reportUnfinished();
    reportUntimed();
    reportTotals();
}

AuditTotals Auditor::totals() const {
    AuditTotals totals = counted_;
    totals.unfinished = packages_.unfinished().size();
    return totals;
}

LogStream Auditor::message(LoggingLevel level) {
    ++counted_.messages;
    counts_.count(level);
    return logger_->log(level);
}

void Auditor::checkTime(const std::string& timeStamp) {
    if (timeStamp < latestTime_) {
        ++counted_.backwards;
        message(LOG_LEVEL_WARNING) << "line " << position_.line << ": time runs backwards, from "
                                   << latestTime_ << " to " << timeStamp;
    }
    latestTime_ = timeStamp;
}

void Auditor::checkPackage(std::string_view entry) {
    const PackageHistory::Step step = packages_.take(entry, position_.line);
    switch (step.event) {
    case PackageHistory::Event::none:
        break;
    case PackageHistory::Event::installed:
        ++counted_.installed;
        break;
    case PackageHistory::Event::upgraded:
        ++counted_.upgraded;
        break;
    case PackageHistory::Event::removed:
        ++counted_.removed;
        message(LOG_LEVEL_INFO) << "line " << position_.line << ": package " << step.package
                                << " removed";
        break;
    }
}

void Auditor::reportUnfinished() {
    for (const auto& [package, state] : packages_.unfinished()) {
        message(LOG_LEVEL_ERROR) << "package " << package << " is left " << state.name
                                 << ", see line " << state.lineNumber;
    }
}

void Auditor::reportUntimed() {
    if (counted_.untimed == 0) {
        return;
    }
    if (counted_.untimed == position_.line) {
        message(LOG_LEVEL_INFO) << "no line begins with a time stamp: is this a log?";
    } else {
        message(LOG_LEVEL_WARNING)
            << counted_.untimed << " of " << position_.line
            << " lines have no time stamp, the first is line " << firstUntimed_;
    }
}

void Auditor::reportTotals() {
    message(LOG_LEVEL_INFO) << position_.line << " lines checked, line end "
                            << narrow(readProperty(lineEndProperty)) << ": packages installed "
                            << counted_.installed << ", upgraded " << counted_.upgraded
                            << ", removed " << counted_.removed << ", left unfinished "
                            << packages_.unfinished().size() << "; steps back in time "
                            << counted_.backwards;
}

} // namespace Demo
