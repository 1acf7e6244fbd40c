#pragma once

#include <string>
#include <vector>

#include "ZOL/Testing/CapturedLog.h"

/// Uses the kit without GoogleTest.
namespace PlainContainer {

/// Every text of a logger, with standard algorithms.
std::vector<std::string> textsOf(const ZOL::Testing::CapturedLog& log, const std::string& logger);

/// The same, from the last one to the first.
std::vector<std::string> reversedTexts(const ZOL::Testing::CapturedLog& log);

} // namespace PlainContainer
