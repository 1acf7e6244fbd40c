#pragma once

#include <cstdint>
#include <optional>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/detail/FirstN.h"
#include "ZOL/Framework/GenericLogger/detail/SuppressionLine.h"

namespace ZOL::Framework::GenericLogger::detail {

/// One execution of a ZOL_LOG_FIRST_N statement.
class FirstNGate : public LogGate {
public:
    bool isUsedUp(FirstN& statement) {
        statement_ = &statement;
        return statement.isUsedUp();
    }
    template <typename Integer>
    bool execute(Integer n) {
        return statement_->execute(n);
    }

private:
    FirstN* statement_ = nullptr;
};

/// One execution of a statement whose next line says how many executions were suppressed.
class SuppressionGate : public LogGate {
public:
    /// @param suppressed the number, or nothing if this execution is suppressed too.
    bool pass(std::optional<std::uint64_t> suppressed) {
        suppressed_ = suppressed.value_or(0);
        return suppressed.has_value();
    }
    SuppressionLine line() const { return SuppressionLine(logger_, level_, suppressed_); }

private:
    std::uint64_t suppressed_ = 0;
};

} // namespace ZOL::Framework::GenericLogger::detail
