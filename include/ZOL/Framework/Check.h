#pragma once

#include "ZOL/Framework/detail/CheckFailure.h"

// NOLINTBEGIN(bugprone-macro-parentheses): the text follows
/// Ends the process with std::abort if the condition is false, in every kind of build. Before that,
/// the message, "Orders.cpp:42: check failed: pieces >= 0: -3 left", is written to standard error,
/// to the crisis log if it can be opened, and with LOG_LEVEL_FATAL to the logger "zol.check". If
/// this takes more than five seconds, the process ends nevertheless. Failures on the way are
/// ignored. If the text throws, the message has the part before that; without a handler for the
/// exception, the process ends by std::terminate and without a message. The condition is evaluated
/// once, the rest only if it is false.
///
///     ZOL_CHECK(pieces >= 0) << pieces << " left";
#define ZOL_CHECK(...)                                                                             \
    (__VA_ARGS__)                                                                                  \
        ? static_cast<void>(0)                                                                     \
        : ::ZOL::Framework::detail::CheckEnd() &                                                   \
              ::ZOL::Framework::detail::CheckFailure(#__VA_ARGS__, __FILE__, __LINE__).text()
// NOLINTEND(bugprone-macro-parentheses)
