#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include "AllRows.h"
#include "WantedRows.h"

// The rows of LoadDriver, a program that does not link the framework: each load is the first, and
// each unload the last.

namespace benchmarks {

namespace {

using ZOL::Gadgets::DLL::DLLHolder;

constexpr Work loading = {"module loaded and unloaded", 10};

struct Module {
    const char* file;
    const char* function; // that is in it
};

constexpr Module emptyModule = {EMPTY_MODULE, "benchmarkEmpty"};
#if defined(_WIN32)
constexpr Module withImports = {EMPTY_MODULE_WITH_IMPORTS, "benchmarkEmpty"};
#endif
constexpr Module framework = {FRAMEWORK_MODULE, "_ZN3ZOL9Framework9Framework12randomNumberEv"};

/// A file that does not load would be measured as a very fast one.
template <const Module& module>
void prove() {
    DLLHolder(module.file).resolve<void()>(module.function);
}

template <const Module& module>
void load(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const DLLHolder holder(module.file);
        keep(holder);
    }
}

constexpr Row rows[] = {
    {loading, Role::Floor, "floor: an empty module", load<emptyModule>, prove<emptyModule>},
#if defined(_WIN32)
    {loading, Role::Reference, "an empty module with the framework's imports", load<withImports>,
     prove<withImports>},
#endif
    {loading, Role::Product, "ZOL", load<framework>, prove<framework>},
};

} // namespace

std::vector<Row> allRows(const std::string& expression) {
    return wantedRows({rowsOf(rows)}, expression);
}

} // namespace benchmarks
