#pragma once

#include <fstream>
#include <string>

#include "DemoModules.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "shared/MessageCounts.h"
#include "shared/Position.h"

namespace Demo {

/// Reads a file and logs its lines.
class Reader {
public:
    explicit Reader(const char* path);

    bool next(Line& line);

private:
    std::string path_;
    std::ifstream file_;
    std::string text_; // of the present line
    ZOL::Framework::GenericLogger::Logger* logger_;
    Position& position_;
    MessageCounts counts_;
};

} // namespace Demo
