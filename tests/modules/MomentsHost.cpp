// A program that is not linked with the framework and loads a module that is. Its argument says how
// it ends: "unload" the module before, "exit" with the module still there, or "thread", with one
// that ends while the module is there and the module unloaded then.

#include <cstdlib>
#include <cstring>
#include <thread>

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr int misused = 4;

} // namespace

int main(int argc, char** argv) {
    const char* const how = argc == 2 ? argv[1] : "";
    const DLLHolder module("Moments", "");
    module.resolve<void(const char*)>("use")("main");
    if (std::strcmp(how, "exit") == 0) {
        std::exit(0); // destroys nothing of this function
    }
    if (std::strcmp(how, "thread") == 0) {
        std::thread(module.resolve<void()>("useAtThreadEnd")).join();
    } else if (std::strcmp(how, "unload") != 0) {
        return misused;
    }
    return 0;
}
