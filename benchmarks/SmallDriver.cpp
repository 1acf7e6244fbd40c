#include <algorithm>
#include <chrono>
#include <random>
#include <vector>

#include "AllRows.h"
#include "Driver.h"
#include "Result.h"

// Measures all rows as GoogleDriver.cpp does, for where there is no Google Benchmark.

namespace benchmarks {

namespace {

using Nanoseconds = std::chrono::duration<double, std::nano>;

struct Measured {
    const Row* row;
    std::size_t batches;
};

double timeOf(const Row& row, std::size_t batches) {
    if (row.prepare != nullptr) {
        row.prepare();
    }
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t i = 0; i < batches; ++i) {
        row.run(row.work.batch);
    }
    const auto end = std::chrono::steady_clock::now();
    if (row.finish != nullptr) {
        row.finish();
    }
    return Nanoseconds(end - start).count();
}

/// As many batches as take that long together.
std::size_t batchesFor(const Row& row, double nanoseconds) {
    std::size_t batches = 1;
    double time = timeOf(row, batches);
    while (time < nanoseconds) {
        // The first rounds are too short to tell how many are needed.
        const double wanted = static_cast<double>(batches) * nanoseconds / std::max(time, 1.0);
        batches = std::max(batches + 1, std::min(batches * 10, static_cast<std::size_t>(wanted)));
        time = timeOf(row, batches);
    }
    return batches;
}

} // namespace

void measureAll(const Options& options) {
    const std::vector<Row> rows = allRows(options.only);
    const double nanoseconds = Nanoseconds(std::chrono::milliseconds(options.milliseconds)).count();
    std::vector<Measured> all;
    all.reserve(rows.size());
    for (const Row& row : rows) {
        all.push_back({&row, batchesFor(row, nanoseconds)});
    }

    writeRows(rows);
    std::minstd_rand random(std::random_device{}());
    for (int repetition = 0; repetition < options.repetitions; ++repetition) {
        std::shuffle(all.begin(), all.end(), random);
        for (const Measured& one : all) {
            writeResult(*one.row, repetition,
                        timeOf(*one.row, one.batches) /
                            static_cast<double>(one.batches * one.row->work.batch));
        }
    }
}

} // namespace benchmarks
