#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "AllRows.h"
#include "Driver.h"
#include "Result.h"

// Measures all rows with Google Benchmark, their repetitions in an order that it picks at random.

namespace benchmarks {

namespace {

std::string nameOf(const Row& row) {
    return std::string(row.work.name) + " / " + row.subject;
}

void measure(benchmark::State& state, const Row& row) {
    if (row.prepare != nullptr) {
        row.prepare();
    }
    const auto batch = static_cast<benchmark::IterationCount>(row.work.batch);
    while (state.KeepRunningBatch(batch)) {
        row.run(row.work.batch);
    }
    if (row.finish != nullptr) {
        row.finish();
    }
}

/// Google Benchmark's results in the lines of this program.
class LineReporter final : public benchmark::BenchmarkReporter {
public:
    explicit LineReporter(const std::vector<Row>& rows) {
        for (const Row& row : rows) {
            rows_.emplace(nameOf(row), &row);
        }
    }

    bool ReportContext(const Context&) override { return true; }

    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (run.run_type == Run::RT_Iteration) {
                writeResult(*rows_.at(run.run_name.function_name), run.repetition_index,
                            run.GetAdjustedRealTime());
            }
        }
    }

private:
    std::map<std::string, const Row*> rows_;
};

} // namespace

void measureAll(const Options& options) {
    const std::vector<Row> rows = allRows(options.only);
    std::vector<std::string> arguments = {
        "benchmarks",
        "--benchmark_enable_random_interleaving=true",
        "--benchmark_repetitions=" + std::to_string(options.repetitions),
        "--benchmark_min_time=" + std::to_string(options.milliseconds / 1000.0),
    };
    std::vector<char*> pointers;
    pointers.reserve(arguments.size());
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());

    for (const Row& row : rows) {
        // Real time: some works are done on more threads than one.
        benchmark::RegisterBenchmark(nameOf(row).c_str(), [&row](benchmark::State& state) {
            measure(state, row);
        })->UseRealTime();
    }
    writeRows(rows);
    LineReporter reporter(rows);
    benchmark::RunSpecifiedBenchmarks(&reporter);
}

} // namespace benchmarks
