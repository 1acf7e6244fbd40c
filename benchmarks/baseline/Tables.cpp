#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>

#include <boost/thread/mutex.hpp>
#include <boost/thread/recursive_mutex.hpp>

#include "Baseline.h"

namespace benchmarks {

namespace {

boost::recursive_mutex namesLock;
std::map<std::string, int*, std::less<>> namesMap;
std::unordered_map<std::string_view, int*> namesHashTable; // its keys refer to those of the map

boost::mutex objectsLock;
std::map<std::string, void*, std::less<>> objects;

template <typename Table>
void* objectIn(const Table& table, const char* name) {
    const auto entry = table.find(std::string_view(name));
    return entry != table.end() ? entry->second : nullptr;
}

} // namespace

void NameTable::insert(const char* name) {
    const boost::recursive_mutex::scoped_lock locked(namesLock);
    static int object = 0;
    const auto entry = namesMap.emplace(name, &object).first;
    namesHashTable.emplace(entry->first, &object);
}

void* NameTable::findInMap(const char* name) {
    const boost::recursive_mutex::scoped_lock locked(namesLock);
    return objectIn(namesMap, name);
}

void* NameTable::findInHashTable(const char* name) {
    const boost::recursive_mutex::scoped_lock locked(namesLock);
    return objectIn(namesHashTable, name);
}

void ObjectTable::insert(const char* name, void* object) {
    const boost::mutex::scoped_lock locked(objectsLock);
    objects.emplace(name, object);
}

void* ObjectTable::find(const char* name) {
    const boost::mutex::scoped_lock locked(objectsLock);
    return objectIn(objects, name);
}

} // namespace benchmarks
