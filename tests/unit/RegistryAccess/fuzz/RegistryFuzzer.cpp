// Random sequences of node operations, each compared with what a plain model says. The fuzzer's
// runtime has the program's entry, and prints how to come by an input again that failed.

#include <cstddef>
#include <cstdint>

#include "Run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
    fuzz::Run(fuzz::OperationInput(bytes, size)).execute();
    return 0;
}
