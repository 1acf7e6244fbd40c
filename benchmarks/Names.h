#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <random>
#include <string>
#include <vector>

namespace benchmarks {

// Half of a table's names are short, the other half long.
inline constexpr std::size_t namesOfEachLength = 500;
inline constexpr std::size_t shortNameLength = 11;
inline constexpr std::size_t longNameLength = 33;

inline std::string nameOf(std::size_t number, std::size_t length) {
    char digits[8];
    std::snprintf(digits, sizeof(digits), ".%04u", static_cast<unsigned int>(number));
    return (length == shortNameLength ? "orders" : "company.product.billing.page") +
           std::string(digits);
}

template <std::size_t length>
const std::vector<std::string>& namesOf() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> made;
        made.reserve(namesOfEachLength);
        for (std::size_t i = 0; i < namesOfEachLength; ++i) {
            made.push_back(nameOf(i, length));
        }
        return made;
    }();
    return names;
}

/// Calls use for every name there is, in the order in which all tables are filled.
template <typename Use>
void forAllNames(Use&& use) {
    std::vector<std::string> names = namesOf<shortNameLength>();
    const std::vector<std::string>& others = namesOf<longNameLength>();
    names.insert(names.end(), others.begin(), others.end());
    std::shuffle(names.begin(), names.end(), std::minstd_rand());
    for (const std::string& name : names) {
        use(name);
    }
}

/// The names of that length, all of them again and again, in an order that is the same in each
/// module, as good as random, and too long for a processor to foresee the next one.
template <std::size_t length>
const std::vector<const std::string*>& shuffledNames() {
    static const std::vector<const std::string*> order = [] {
        constexpr std::size_t rounds = 40;
        std::vector<const std::string*> made;
        made.reserve(rounds * namesOfEachLength);
        for (std::size_t round = 0; round < rounds; ++round) {
            for (const std::string& name : namesOf<length>()) {
                made.push_back(&name);
            }
        }
        std::shuffle(made.begin(), made.end(), std::minstd_rand());
        return made;
    }();
    return order;
}

/// Calls use n times, with the names of that length in turn.
template <std::size_t length, typename Use>
void inTurn(std::size_t n, Use&& use) {
    const std::vector<const std::string*>& names = shuffledNames<length>();
    static std::size_t next = 0;
    for (std::size_t i = 0; i < n; ++i) {
        use(*names[next]);
        next = next + 1 == names.size() ? 0 : next + 1;
    }
}

} // namespace benchmarks
