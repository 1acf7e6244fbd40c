// Compares random sequences of node operations with a simple model. libFuzzer has the program's
// main and prints how to reproduce a failure.

#include <cstddef>
#include <cstdint>

#include "Run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    fuzz::Run(fuzz::OperationInput(bytes, size)).execute();
    return 0;
}
