#pragma once

/// Counts the calls of functions about signals by this program and, if it exports its symbols, by
/// the plug-ins that it loads. Each of them is a system call.
namespace SignalCalls {

/// Calls of pthread_sigmask.
int maskCalls();

/// Calls of sigpending and sigtimedwait.
int pendingCalls();

/// Starts to count at 0.
void reset();

} // namespace SignalCalls
