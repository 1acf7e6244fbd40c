#pragma once

#include <locale>
#include <sstream>
#include <string>

#include "ZOL/Framework/GenericLogger/detail/TextStream.h"

namespace text {

/// What the insertions make of a TextStream.
template <typename Insertions>
std::string textOf(Insertions&& insertions) {
    ZOL::Framework::GenericLogger::detail::TextStream stream;
    insertions(stream);
    return stream.str();
}

/// What they make of a std::ostringstream in the classic locale.
template <typename Insertions>
std::string classicTextOf(Insertions&& insertions) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    insertions(stream);
    return stream.str();
}

} // namespace text
