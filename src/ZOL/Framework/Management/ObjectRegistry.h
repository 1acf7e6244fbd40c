#pragma once

#include <map>
#include <string>

#include <boost/thread/mutex.hpp>

namespace ZOL::Framework::Management {

/// The process's table of named objects. It owns the names, not the objects.
class ObjectRegistry {
public:
    void* registerObject(const char* name, void* (*factory)());
    void* findObject(const char* name);

private:
    void* lookup(const char* name) const; // with mutex_ held

    std::map<std::string, void*> objects_;
    boost::mutex mutex_;
};

} // namespace ZOL::Framework::Management
