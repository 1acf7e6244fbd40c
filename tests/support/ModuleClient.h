#pragma once

#include "LoadedModule.h"

#include "ZOL/Framework/Management/PropertyManager.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace support {

inline bool frameworkIsLoaded() {
    return isLoaded("ZOL_Framework", "2.0.8.129");
}

/// A module that loads the framework, for a program that is not linked with it. Both are loaded
/// during the object's lifetime.
class ModuleClient {
public:
    using Text = const char*;
    using WideString = ZOL::Framework::Management::WideString;
    using PropertyManager = ZOL::Framework::Management::PropertyManager;

    ZOL::Gadgets::DLL::DLLHolder holder{"ModuleClient", ""};

    int (*nextOf)(Text) = holder.resolve<int(Text)>("nextOf");
    void* (*objectOf)(Text, void* (*)()) = holder.resolve<void*(Text, void* (*)())>("objectOf");
    void* (*knownObject)(Text) = holder.resolve<void*(Text)>("knownObject");
    void (*makeLogger)(Text) = holder.resolve<void(Text)>("makeLogger");
    void (*logTo)(Text, Text) = holder.resolve<void(Text, Text)>("logTo");
    void (*install)() = holder.resolve<void()>("install");
    void (*uninstall)() = holder.resolve<void()>("uninstall");
    void (*installWatched)(void (*)(Text)) = holder.resolve<void(void (*)(Text))>("installWatched");
    void (*callOnLog)(void (*)()) = holder.resolve<void(void (*)())>("callOnLog");
    bool (*refusesNoBackend)() = holder.resolve<bool()>("refusesNoBackend");
    int (*drawn)() = holder.resolve<int()>("drawn");
    PropertyManager* (*properties)() = holder.resolve<PropertyManager*()>("properties");
    bool (*failsToRead)(const WideString*) = holder.resolve<bool(const WideString*)>("failsToRead");
    bool (*join)(Text, Text, Text) = holder.resolve<bool(Text, Text, Text)>("join");
    bool (*resize)() = holder.resolve<bool()>("resize");
};

} // namespace support
