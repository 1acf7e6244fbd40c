// A program whose ZOL_CHECK fails while there is no memory: CheckWithoutMemory ALLOCATION FILE.
// From the allocation with this number on, all fail. Standard error is the file.

#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "FailingAllocator.h"

#include "ZOL/Framework/Check.h"

namespace FailingAllocator = support::FailingAllocator;

int main(int argc, char** argv) {
    if (argc != 3 || std::freopen(argv[2], "w", stderr) == nullptr) {
        return EXIT_FAILURE;
    }
    const std::string longText(1000, 'x');
    const bool isTrue = argv[2] == nullptr;
    FailingAllocator::start(std::strtoul(argv[1], nullptr, 10), FailingAllocator::Mode::FromThenOn);
    try {
        ZOL_CHECK(isTrue) << "long: " << longText;
    } catch (const std::bad_alloc&) {
    }
    return EXIT_SUCCESS;
}
