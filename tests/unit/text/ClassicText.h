#pragma once

#include <locale>
#include <sstream>
#include <string>

#include "ZOL/Framework/GenericLogger/detail/TextStream.h"

namespace text {

/// The text of the insertions into a TextStream.
template <typename Insertions>
std::string textOf(Insertions&& insertions) {
    ZOL::Framework::GenericLogger::detail::TextStream stream;
    insertions(stream);
    return stream.str();
}

/// The same with a std::ostringstream in the classic locale.
template <typename Insertions>
std::string classicTextOf(Insertions&& insertions) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    insertions(stream);
    return stream.str();
}

} // namespace text
