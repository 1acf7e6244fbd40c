#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include "Driver.h"

// Measures loading and unloading the framework, in a program that does not link it: each load is
// the first, and each unload the last.

namespace benchmarks {

namespace {

using ZOL::Gadgets::DLL::DLLHolder;

struct Module {
    const char* file;
    const char* function; // one that it exports
};

constexpr Module emptyModule = {EMPTY_MODULE, "benchmarkEmpty"};
#if defined(EMPTY_MODULE_WITH_IMPORTS)
constexpr Module withImports = {EMPTY_MODULE_WITH_IMPORTS, "benchmarkEmpty"};
#endif
constexpr Module framework = {FRAMEWORK_MODULE, "_ZN3ZOL9Framework9Framework12randomNumberEv"};

/// Throws if the module does not load: a failed load would look like a very fast one.
template <const Module& module>
void check() {
    DLLHolder(module.file).resolve<void()>(module.function);
}

template <const Module& module>
void load(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const DLLHolder holder(module.file);
        keep(holder);
    }
}

} // namespace

void measureAll() {
    constexpr Workload loading = {"module loaded and unloaded", 10};
    // clang-format off: its versions indent differently after #if
    measure({
        {loading, Role::Floor, "floor: an empty module", load<emptyModule>, check<emptyModule>},
#if defined(EMPTY_MODULE_WITH_IMPORTS)
            {loading, Role::Reference, "an empty module with the framework's imports",
             load<withImports>, check<withImports>},
#endif
            {loading, Role::Product, "ZOL", load<framework>, check<framework>},
    });
    // clang-format on
}

} // namespace benchmarks
