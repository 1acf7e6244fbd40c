#include <cstring>
#include <string>

#include "ZOL/Framework/StringHolder.h"

#include "../Subject.h"
#include "Rows.h"

using ZOL::Framework::StringHolder;

namespace benchmarks {

namespace {

constexpr Workload construct = {"string of 40, made and destroyed", 10000};
constexpr Workload copy = {"string of 40, copied and destroyed", 10000};
constexpr Workload read = {"string of 40, its length read", 10000};

template <typename Text>
void runConstruct(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const Text text(fortyCharacters);
        keep(text);
    }
}

template <typename Text>
void runCopy(std::size_t n) {
    const Text original(fortyCharacters);
    for (std::size_t i = 0; i < n; ++i) {
        keep(original);
        const Text text(original); // NOLINT(performance-unnecessary-copy-initialization)
        keep(text);
    }
}

template <typename Text>
void runRead(std::size_t n) {
    const Text text(fortyCharacters);
    for (std::size_t i = 0; i < n; ++i) {
        keep(text);
        keep(std::strlen(text.c_str()));
    }
}

constexpr const char* standard = "floor: std::string";
constexpr const char* holder = "ZOL StringHolder";

} // namespace

std::vector<Row> stringRows() {
    return {
        {construct, Role::Floor, standard, runConstruct<std::string>},
        {construct, Role::Product, holder, runConstruct<StringHolder>},
        {copy, Role::Floor, standard, runCopy<std::string>},
        {copy, Role::Product, holder, runCopy<StringHolder>},
        {read, Role::Floor, standard, runRead<std::string>},
        {read, Role::Product, holder, runRead<StringHolder>},
    };
}

} // namespace benchmarks
