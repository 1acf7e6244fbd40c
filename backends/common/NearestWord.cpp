#include "NearestWord.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

#include "Text.h"

namespace ZOL::Backends {

namespace {

bool areEqual(char left, char right) {
    return equalsIgnoreCase({&left, 1}, {&right, 1});
}

/// How many letters must be inserted, removed, replaced or exchanged with their neighbour to make
/// one word of the other.
std::size_t distance(std::string_view from, std::string_view to) {
    // The distances of the first i letters of one word to each number of letters of the other.
    std::vector<std::size_t> beforeLast(to.size() + 1);
    std::vector<std::size_t> last(to.size() + 1);
    std::vector<std::size_t> current(to.size() + 1);
    std::iota(current.begin(), current.end(), std::size_t{0});
    for (std::size_t i = 1; i <= from.size(); ++i) {
        beforeLast.swap(last);
        last.swap(current);
        current[0] = i;
        for (std::size_t j = 1; j <= to.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (areEqual(from[i - 1], to[j - 1]) ? 0 : 1);
            current[j] = std::min({replaced, last[j] + 1, current[j - 1] + 1});
            if (i > 1 && j > 1 && areEqual(from[i - 1], to[j - 2]) &&
                areEqual(from[i - 2], to[j - 1])) {
                current[j] = std::min(current[j], beforeLast[j - 2] + 1);
            }
        }
    }
    return current.back();
}

bool startsWith(std::string_view text, std::string_view begin) {
    return equalsIgnoreCase(text.substr(0, begin.size()), begin);
}

/// Whether a typing error may have made one word of the other.
bool isNear(std::string_view known, std::size_t errors) {
    constexpr std::size_t lettersPerError = 3;
    return errors < known.size() &&
           errors <= std::max<std::size_t>(known.size() / lettersPerError, 1);
}

} // namespace

std::string_view nearestWord(std::string_view unknown, const std::vector<std::string_view>& known) {
    // A value may be of any length, and a long one is near to no word.
    constexpr std::size_t maxLetters = 64;
    std::string_view nearest;
    std::size_t least = 0;
    if (unknown.empty() || unknown.size() > maxLetters) {
        return nearest;
    }
    for (const std::string_view word : known) {
        const std::size_t letters = distance(unknown, word);
        const bool isMeant =
            startsWith(word, unknown) || startsWith(unknown, word) || isNear(word, letters);
        if (isMeant && (nearest.empty() || letters < least)) {
            nearest = word;
            least = letters;
        }
    }
    return nearest;
}

} // namespace ZOL::Backends
