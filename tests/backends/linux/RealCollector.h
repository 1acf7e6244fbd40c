#pragma once

#include <string>

#include "Collector.h"

/// What the tests with a real log collector share.
namespace realCollector {

/// A free port on the loopback address.
int freePort(Collector::Kind kind);

/// Waits until a program listens on this port.
void waitForPort(Collector::Kind kind, int port);

void waitForFile(const std::string& file);

/// A block of collectors.md.
std::string documented(const std::string& block);

/// Replaces each occurrence of what a block shows. Fails if there is none.
std::string replaced(std::string text, const std::string& from, const std::string& to);

/// Logs numbered messages of all levels, of which every hundredth is long, in portions. Expects
/// that the collector writes each to the file, in their order, as "TIME HOST PROGRAM[ID]:
/// user.SEVERITY: MESSAGE".
/// @param fraction the fraction of a second in its times.
void expectToCollect(int messages, int portion, const std::string& file,
                     const std::string& fraction = ".000");

/// Moves this process into a private mount namespace with a /dev that has no log yet.
void leaveTheMachinesLog();

} // namespace realCollector
