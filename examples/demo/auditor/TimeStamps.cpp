#include "auditor/TimeStamps.h"

namespace Demo {

namespace {

constexpr std::string_view shape = "0000-00-00 00:00:00";
constexpr std::size_t separator = shape.find(' ');

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

} // namespace

std::string timeStampOf(std::string_view line) {
    std::string stamp(line.substr(0, shape.size()));
    if (stamp.size() < shape.size()) {
        return "";
    }
    if (stamp[separator] == 'T') {
        stamp[separator] = ' ';
    }
    for (std::size_t i = 0; i < shape.size(); ++i) {
        const bool fits = isDigit(shape[i]) ? isDigit(stamp[i]) : stamp[i] == shape[i];
        if (!fits) {
            return "";
        }
    }
    return stamp;
}

} // namespace Demo
