#include <cstddef>
#include <string>

#include "ZOL/Framework/Management/MemoryManager.h"

#include "../Names.h"
#include "../far/ObjectTable.h"
#include "RowFiles.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace benchmarks {

namespace {

constexpr Work found = {"registerObject of a name that is there, among 1000", 1000};

void* theObject() {
    static int object = 0;
    return &object;
}

void prepareFloor() {
    static bool entered = false;
    if (!entered) {
        forAllNames([](const std::string& name) { ObjectTable::enter(name.c_str(), theObject()); });
        entered = true;
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

constexpr Row rows[] = {
    {found, Role::Floor, floorName, runFloor, prepareFloor},
    {found, Role::Product, productName, runProduct, prepareProduct},
};

} // namespace

Rows namedObjectRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
