#include "../Names.h"
#include "../Workloads.h"
#include "../baseline/Baseline.h"
#include "Delivery.h"
#include "Rows.h"

using ZOL::Framework::GenericLogger::Logger;

namespace benchmarks {

namespace {

void prepareTables() {
    static bool inserted = false;
    if (!inserted) {
        forAllNames([](const std::string& name) { NameTable::insert(name.c_str()); });
        inserted = true;
    }
}

void prepareProduct() {
    productLogger();
    forAllNames([](const std::string& name) { Logger::getLogger(name.c_str()); });
}

template <std::size_t length>
void runMap(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(NameTable::findInMap(name.c_str())); });
}

template <std::size_t length>
void runHashTable(std::size_t n) {
    inTurn<length>(n,
                   [](const std::string& name) { keep(NameTable::findInHashTable(name.c_str())); });
}

template <std::size_t length>
void runProduct(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(Logger::getLogger(name.c_str())); });
}

constexpr const char* hashTable = "a std::unordered_map";

constexpr Row rows[] = {
    {shortNames, Role::Floor, floorName, runMap<shortNameLength>, prepareTables},
    {shortNames, Role::Reference, hashTable, runHashTable<shortNameLength>, prepareTables},
    {shortNames, Role::Product, productName, runProduct<shortNameLength>, prepareProduct},
    {longNames, Role::Floor, floorName, runMap<longNameLength>, prepareTables},
    {longNames, Role::Reference, hashTable, runHashTable<longNameLength>, prepareTables},
    {longNames, Role::Product, productName, runProduct<longNameLength>, prepareProduct},
};

} // namespace

Rows loggerByNameRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
