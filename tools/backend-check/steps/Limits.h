#pragma once

#include <chrono>
#include <cstddef>

namespace backendcheck {

// What the checks "time", "channels" and "leaks" accept. docs/writing-a-back-end.md lists these
// limits.

/// A longer time is a note. Of the times of many messages, the median and the maximum count, of
/// those of createChannel and of the first message of a logger, the median.
constexpr std::chrono::milliseconds maxMedianOfMessages{10};
constexpr std::chrono::milliseconds maxOfMessages{100};
constexpr std::chrono::milliseconds maxOfCreateChannel{100};
constexpr std::chrono::milliseconds maxOfFirstMessage{100};

/// A leak: each message leaves at least so many bytes on the heap...
constexpr std::ptrdiff_t leakOfMessage = 32;
/// ... and this does not end with so many messages. A bounded queue is full by then.
constexpr int messagesForLeak = 20000;

/// Other memory, such as mapped files, that all messages of the check, 75 MiB, may leave in use.
constexpr std::size_t maxOtherMemory = std::size_t{48} << 20U;

/// Handles and threads that all messages of the check, at least some hundreds, may leave.
constexpr std::size_t maxHandles = 100;

/// createChannel is called so many times with one name...
constexpr int repeatedChannels = 30;
/// ... and may leave so many handles and threads in all.
constexpr std::size_t maxHandlesOfRepeatedChannels = 10;

} // namespace backendcheck
