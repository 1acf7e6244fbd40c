#include "NameTable.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include <boost/thread/recursive_mutex.hpp>

namespace benchmarks {

namespace {

boost::recursive_mutex lock;
std::map<std::string, int*, std::less<>> tree;
std::unordered_map<std::string_view, int*> hashTable; // its keys are those of the tree

} // namespace

void NameTable::enter(const char* name) {
    const boost::recursive_mutex::scoped_lock locked(lock);
    static int object = 0;
    const auto entry = tree.emplace(name, &object).first;
    hashTable.emplace(entry->first, &object);
}

void* NameTable::inTree(const char* name) {
    const boost::recursive_mutex::scoped_lock locked(lock);
    const auto entry = tree.find(std::string_view(name));
    return entry != tree.end() ? entry->second : nullptr;
}

void* NameTable::inHashTable(const char* name) {
    const boost::recursive_mutex::scoped_lock locked(lock);
    const auto entry = hashTable.find(std::string_view(name));
    return entry != hashTable.end() ? entry->second : nullptr;
}

} // namespace benchmarks
