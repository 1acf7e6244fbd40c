#include <cstdlib>

#include "ZOL/Framework/Management/MemoryManager.h"

#include "Rows.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

namespace {

constexpr Workload block = {"block of 64, allocated and freed", 10000};
constexpr std::size_t size = 64;

void runFloor(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        void* const memory = std::malloc(size);
        keep(memory);
        std::free(memory);
    }
}

void runProduct(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        void* const memory = MemoryManager::allocate(size);
        keep(memory);
        MemoryManager::deallocate(memory);
    }
}

} // namespace

std::vector<Row> heapRows() {
    return {
        {block, Role::Floor, "floor: malloc and free", runFloor},
        {block, Role::Product, productName, runProduct},
    };
}

} // namespace benchmarks
