#include <cstddef>
#include <string>

#include "ZOL/Framework/Management/MemoryManager.h"

#include "../Names.h"
#include "../baseline/Baseline.h"
#include "Rows.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

namespace {

constexpr Workload found = {"registerObject of a name that is there, among 1000", 1000};

void* theObject() {
    static int object = 0;
    return &object;
}

void prepareFloor() {
    static bool inserted = false;
    if (!inserted) {
        forAllNames(
            [](const std::string& name) { ObjectTable::insert(name.c_str(), theObject()); });
        inserted = true;
    }
}

void prepareProduct() {
    forAllNames(
        [](const std::string& name) { MemoryManager::registerObject(name.c_str(), theObject); });
}

void runFloor(std::size_t n) {
    inTurn<longNameLength>(n,
                           [](const std::string& name) { keep(ObjectTable::find(name.c_str())); });
}

void runProduct(std::size_t n) {
    inTurn<longNameLength>(n, [](const std::string& name) {
        keep(MemoryManager::registerObject(name.c_str(), theObject));
    });
}

} // namespace

std::vector<Row> namedObjectRows() {
    return {
        {found, Role::Floor, floorName, runFloor, prepareFloor},
        {found, Role::Product, productName, runProduct, prepareProduct},
    };
}

} // namespace benchmarks
