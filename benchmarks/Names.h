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
        std::vector<std::string> result;
        result.reserve(namesOfEachLength);
        for (std::size_t i = 0; i < namesOfEachLength; ++i) {
            result.push_back(nameOf(i, length));
        }
        return result;
    }();
    return names;
}

/// Calls use for every name, in the order in which all tables are filled.
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

/// All names of that length, repeated and shuffled. The order is the same in each module, and too
/// long for branch prediction to learn.
template <std::size_t length>
const std::vector<const std::string*>& shuffledNames() {
    static const std::vector<const std::string*> order = [] {
        constexpr std::size_t rounds = 40;
        std::vector<const std::string*> result;
        result.reserve(rounds * namesOfEachLength);
        for (std::size_t round = 0; round < rounds; ++round) {
            for (const std::string& name : namesOf<length>()) {
                result.push_back(&name);
            }
        }
        std::shuffle(result.begin(), result.end(), std::minstd_rand());
        return result;
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
