#pragma once

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/detail/EveryInterval.h"
#include "ZOL/Framework/GenericLogger/detail/EveryNth.h"
#include "ZOL/Framework/GenericLogger/detail/FileName.h"
#include "ZOL/Framework/GenericLogger/detail/FirstN.h"
#include "ZOL/Framework/GenericLogger/detail/StatementGates.h"
#include "ZOL/Framework/GenericLogger/detail/StatementState.h"

// Statements that log some of their executions only. As with ZOL_LOG, an execution whose level is
// not active is not logged. It does not count, and nothing of the line or of the last argument is
// evaluated. The last argument is written as ..., because it may contain commas.
//
// Each statement counts for itself, across all threads of the module that it is compiled into. An
// inline function or template has one count per module and instance, unless modules share the
// function, as they do on Linux with default visibility. A module that is unloaded and loaded again
// counts from the beginning.

/// Logs the first, the (n+1)-th, the (2n+1)-th execution and so on; n is the last argument. From
/// the second line on, the line ends with the number of executions that were suppressed since the
/// line before: "stock is low (999 suppressed)". An n below 1 is taken as 1. n may change; it is
/// evaluated in each execution whose level is active.
///
///     ZOL_LOG_EVERY_N(logger, LOG_LEVEL_WARNING, 1000) << "stock is low";
#define ZOL_LOG_EVERY_N(logger, level, ...)                                                        \
    ZOL_DETAIL_LOG_EVERY_N(ZOL_DETAIL_JOIN(zolLogGate, __COUNTER__), logger, level, (__VA_ARGS__))

/// Logs the first n executions; n is the last argument. Later ones evaluate nothing, also not the
/// logger.
#define ZOL_LOG_FIRST_N(logger, level, ...)                                                        \
    ZOL_DETAIL_LOG_FIRST_N(ZOL_DETAIL_JOIN(zolLogGate, __COUNTER__), logger, level, (__VA_ARGS__))

/// Logs the first execution. Later ones evaluate nothing, also not the logger.
#define ZOL_LOG_ONCE(logger, level) ZOL_LOG_FIRST_N(logger, level, 1)

/// Logs an execution if at least the interval, the last argument, has passed since the last line of
/// the statement. It is a std::chrono::duration. Lines end with the number of suppressed
/// executions, like those of ZOL_LOG_EVERY_N. The clock is std::chrono::steady_clock.
///
///     ZOL_LOG_EVERY(logger, LOG_LEVEL_ERROR, std::chrono::seconds(10)) << "no connection";
#define ZOL_LOG_EVERY(logger, level, ...)                                                          \
    ZOL_DETAIL_LOG_EVERY(ZOL_DETAIL_JOIN(zolLogGate, __COUNTER__), logger, level, (__VA_ARGS__))

/// Logs if the condition, the last argument, is true. The condition is evaluated only if the level
/// is active.
#define ZOL_LOG_IF(logger, level, ...)                                                             \
    ZOL_DETAIL_LOG_CONDITIONAL(ZOL_DETAIL_JOIN(zolLogGate, __COUNTER__), logger, level,            \
                               (__VA_ARGS__))

/// ZOL_LOG with the position in the source in front of the text: "Orders.cpp:42: sold out".
#define ZOL_LOG_HERE(logger, level)                                                                \
    ZOL_LOG(logger, level) << ::ZOL::Framework::GenericLogger::detail::fileName(__FILE__) << ':'   \
                           << __LINE__ << ": "

#define ZOL_DETAIL_LOG_EVERY_N(gate, logger, level, n)                                             \
    ZOL_DETAIL_LOG_IF_OPEN(::ZOL::Framework::GenericLogger::detail::SuppressionGate, gate, level,  \
                           ZOL_DETAIL_LOG_OPEN(gate, logger, level) &&                             \
                               (gate).pass(ZOL_DETAIL_STATEMENT_STATE(                             \
                                               ::ZOL::Framework::GenericLogger::detail::EveryNth)  \
                                               .execute(n)))
#define ZOL_DETAIL_LOG_FIRST_N(gate, logger, level, n)                                             \
    ZOL_DETAIL_LOG_IF_OPEN(::ZOL::Framework::GenericLogger::detail::FirstNGate, gate, level,       \
                           !(gate).isUsedUp(ZOL_DETAIL_STATEMENT_STATE(                            \
                               ::ZOL::Framework::GenericLogger::detail::FirstN)) &&                \
                               ZOL_DETAIL_LOG_OPEN(gate, logger, level) && (gate).execute(n))
#define ZOL_DETAIL_LOG_EVERY(gate, logger, level, interval)                                        \
    ZOL_DETAIL_LOG_IF_OPEN(                                                                        \
        ::ZOL::Framework::GenericLogger::detail::SuppressionGate, gate, level,                     \
        ZOL_DETAIL_LOG_OPEN(gate, logger, level) &&                                                \
            (gate).pass(                                                                           \
                ZOL_DETAIL_STATEMENT_STATE(::ZOL::Framework::GenericLogger::detail::EveryInterval) \
                    .execute(interval)))
#define ZOL_DETAIL_LOG_CONDITIONAL(gate, logger, level, condition)                                 \
    ZOL_DETAIL_LOG_IF_OPEN(::ZOL::Framework::GenericLogger::LogGate, gate, level,                  \
                           ZOL_DETAIL_LOG_OPEN(gate, logger, level) &&                             \
                               static_cast<bool>(condition))
