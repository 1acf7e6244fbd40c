// Compares random insertions and manipulators on a TextStream with a std::ostringstream. libFuzzer
// has the program's main and prints how to reproduce a failure.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "ClassicText.h"
#include "Insertion.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    const auto insertions = [=](auto& stream) {
        text::insertAll(stream, text::InsertionInput(bytes, size));
    };
    const std::string text = text::textOf(insertions);
    const std::string classic = text::classicTextOf(insertions);
    if (text != classic) {
        std::fprintf(stderr, "the line:             '%s'\nthe classic stream's: '%s'\n",
                     text.c_str(), classic.c_str());
        std::abort();
    }
    return 0;
}
