#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "DemoModules.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "auditor/PackageHistory.h"
#include "shared/MessageCounts.h"
#include "shared/Position.h"

namespace Demo {

/// Checks the lines of a log and logs what it finds.
class Auditor {
public:
    Auditor();

    void check(std::string_view line);
    void finish();
    AuditTotals totals() const;

private:
    ZOL::Framework::GenericLogger::LogStream
    message(ZOL::Framework::GenericLogger::LoggingLevel level);

    void checkTime(const std::string& timeStamp);
    void checkPackage(std::string_view entry);
    void reportUnfinished();
    void reportUntimed();
    void reportTotals();

    ZOL::Framework::GenericLogger::Logger* logger_;
    const Position& position_; // of the reader, whose line is checked
    MessageCounts counts_;
    PackageHistory packages_;
    AuditTotals counted_{};        // but for the unfinished packages, which packages_ knows
    std::size_t firstUntimed_ = 0; // line number
    std::string latestTime_;
};

} // namespace Demo
