#include "Driver.h"

#include <cstdio>
#include <exception>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include <benchmark/benchmark.h>

namespace benchmarks {

namespace {

// More than ten, since the lines carry their number.
constexpr std::size_t checkedLines = 200;

void call(void (*function)()) {
    if (function != nullptr) {
        function();
    }
}

const char* nameOf(Role role) {
    switch (role) {
    case Role::Floor:
        return "floor";
    case Role::Reference:
        return "reference";
    case Role::Product:
        return "product";
    case Role::Peer:
        break;
    }
    return "peer";
}

void checkDelivery(const std::vector<Row>& rows) {
    std::map<std::string, std::size_t> bytesOf;
    for (const Row& row : rows) {
        if (row.deliver == nullptr) {
            continue;
        }
        call(row.prepare);
        call(row.prepareBatch);
        const std::size_t bytes = row.deliver(checkedLines);
        call(row.finish);
        const std::size_t expected = bytesOf.emplace(row.workload.name, bytes).first->second;
        if (bytes != expected) {
            throw std::runtime_error(std::string(row.workload.name) + ": " + row.subject +
                                     " delivers " + std::to_string(bytes) + " bytes, others " +
                                     std::to_string(expected));
        }
    }
}

void run(benchmark::State& state, const Row& row) {
    state.SetLabel(nameOf(row.role));
    const auto batch = static_cast<benchmark::IterationCount>(row.workload.batch);
    call(row.prepare);
    while (state.KeepRunningBatch(batch)) {
        if (row.prepareBatch != nullptr) {
            state.PauseTiming();
            row.prepareBatch();
            state.ResumeTiming();
        }
        row.run(row.workload.batch);
    }
    call(row.finish);
}

} // namespace

void measure(const std::vector<Row>& rows) {
    checkDelivery(rows);
    for (const Row& row : rows) {
        const std::string name = std::string(row.workload.name) + " | " + row.subject;
        // Real time: some workloads use more than one thread.
        benchmark::RegisterBenchmark(name.c_str(), [&row](benchmark::State& state) {
            run(state, row);
        })->UseRealTime();
    }
    benchmark::JSONReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    benchmark::ClearRegisteredBenchmarks();
}

} // namespace benchmarks

int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) {
        return 1;
    }
    try {
        benchmarks::measureAll();
        // Shows that the results are complete, even if the process does not end.
        std::cout << "{\"complete\": true}" << std::endl;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchmarks: %s\n", error.what());
        return 1;
    }
    return 0;
}
