#include "InsertionInput.h"

#include <cmath>
#include <cstring>
#include <limits>

namespace text {

double InsertionInput::number() {
    using Limits = std::numeric_limits<double>;
    // Where the shortest or the six-digit form changes its notation.
    constexpr double special[] = {0.0,
                                  -0.0,
                                  1e-5,
                                  1e-4,
                                  9.9999995e-5,
                                  123456.0,
                                  1234567.0,
                                  999999.5,
                                  1e6,
                                  0.5,
                                  1e22,
                                  1e23,
                                  Limits::min(),
                                  -1e-300,
                                  Limits::max(),
                                  Limits::infinity(),
                                  -Limits::infinity(),
                                  Limits::quiet_NaN(),
                                  Limits::denorm_min(),
                                  Limits::epsilon()};
    constexpr double thousand = 1000;
    constexpr int exponents = 80;
    switch (below(4)) {
    case 0:
        return pick(special);
    case 1:
        return value<double>();
    case 2:
        return static_cast<double>(integer<std::int32_t>()) / thousand;
    default:
        return std::ldexp(static_cast<double>(integer<std::int32_t>()),
                          static_cast<int>(below(exponents)) - exponents / 2);
    }
}

void* InsertionInput::address() {
    const auto bits = integer<std::uintptr_t>();
    void* result = nullptr;
    std::memcpy(&result, &bits, sizeof result);
    return result;
}

std::string InsertionInput::text() {
    // Enough pieces to exceed a line's inline buffer sometimes.
    constexpr std::size_t pieces = 40;
    const std::size_t wanted = below(4) == 0 ? below(pieces) : below(3);
    std::string result;
    for (std::size_t i = 0; i < wanted; ++i) {
        result.append(below(30), static_cast<char>(byte()));
    }
    return result;
}

} // namespace text
