#include "../Names.h"
#include "../Works.h"
#include "../far/NameTable.h"
#include "ProductLogger.h"
#include "RowFiles.h"

using ZOL::Framework::GenericLogger::Logger;

namespace benchmarks {

namespace {

void prepareTables() {
    static bool entered = false;
    if (!entered) {
        forAllNames([](const std::string& name) { NameTable::enter(name.c_str()); });
        entered = true;
    }
}

void prepareProduct() {
    productLogger();
    forAllNames([](const std::string& name) { Logger::getLogger(name.c_str()); });
}

template <std::size_t length>
void runTree(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(NameTable::inTree(name.c_str())); });
}

template <std::size_t length>
void runHashTable(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(NameTable::inHashTable(name.c_str())); });
}

template <std::size_t length>
void runProduct(std::size_t n) {
    inTurn<length>(n, [](const std::string& name) { keep(Logger::getLogger(name.c_str())); });
}

constexpr const char* hashTable = "a std::unordered_map";

constexpr Row rows[] = {
    {shortNames, Role::Floor, floorName, runTree<shortNameLength>, prepareTables},
    {shortNames, Role::Reference, hashTable, runHashTable<shortNameLength>, prepareTables},
    {shortNames, Role::Product, productName, runProduct<shortNameLength>, prepareProduct},
    {longNames, Role::Floor, floorName, runTree<longNameLength>, prepareTables},
    {longNames, Role::Reference, hashTable, runHashTable<longNameLength>, prepareTables},
    {longNames, Role::Product, productName, runProduct<longNameLength>, prepareProduct},
};

} // namespace

Rows loggerByNameRows() {
    return rowsOf(rows);
}

} // namespace benchmarks
