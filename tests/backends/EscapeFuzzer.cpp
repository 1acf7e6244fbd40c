// Escapes random bytes. libFuzzer has the program's main and prints how to reproduce a failure.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "EscapedText.h"
#include "Text.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const std::string text(bytes, bytes + size);
    const std::string escaped = ZOL::Backends::escaped(text);
    std::string error = findEscapingError(text, escaped);
    if (ZOL::Backends::escaped(escaped) != escaped) {
        error = "is escaped again";
    }
    constexpr std::size_t limit = 20;
    std::string truncated = escaped;
    ZOL::Backends::truncateEscaped(truncated, limit);
    if (truncated.size() > limit || !findEscapingError(truncated, truncated).empty()) {
        error = "is not truncated as a text";
    }
    if (!error.empty()) {
        std::fprintf(stderr, "'%s' %s\n", escaped.c_str(), error.c_str());
        std::abort();
    }
    return 0;
}
