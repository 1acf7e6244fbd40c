#include "ObjectTable.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include <boost/thread/mutex.hpp>

namespace benchmarks {

namespace {

boost::mutex lock;
std::map<std::string, void*, std::less<>> objects;

} // namespace

void ObjectTable::enter(const char* name, void* object) {
    const boost::mutex::scoped_lock locked(lock);
    objects.emplace(name, object);
}

void* ObjectTable::find(const char* name) {
    const boost::mutex::scoped_lock locked(lock);
    const auto entry = objects.find(std::string_view(name));
    return entry != objects.end() ? entry->second : nullptr;
}

} // namespace benchmarks
