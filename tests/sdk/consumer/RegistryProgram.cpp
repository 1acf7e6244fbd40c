#include <cstdio>
#include <exception>

#include "ZOL/Gadgets/DLL/DLLHolder.h"

int main() {
    try {
        const ZOL::Gadgets::DLL::DLLHolder module("ConsumerRegistry", "");
        std::printf("%d\n", module.resolve<int(int)>("passThroughRegistry")(42));
        std::fflush(stdout);
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
    return 0;
}
