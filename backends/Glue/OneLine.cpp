#include "OneLine.h"

namespace ZOL::Backends {

std::string oneLine(std::string_view text) {
    while (!text.empty() && (text.back() == '\n' || text.back() == '\r')) {
        text.remove_suffix(1);
    }
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        if (character == '\n') {
            line += "\\n";
        } else if (character == '\r') {
            line += "\\r";
        } else if (character == '\0') {
            line += "\\0"; // whoever prints the line would take it for the end
        } else {
            line += character;
        }
    }
    return line;
}

} // namespace ZOL::Backends
