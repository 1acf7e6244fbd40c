#include "AllRows.h"

#include <cstdlib>
#include <map>
#include <stdexcept>
#include <thread>

#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include "WantedRows.h"
#include "rows/RowFiles.h"

namespace benchmarks {

namespace {

constexpr const char* peers[] = {BENCHMARK_PEERS};

// Of more than one digit, since the texts carry the number of the line.
constexpr std::size_t lines = 200;

Rows loadPeer(const char* name) {
    // Stays loaded: the rows are in it.
    const auto* const holder = new ZOL::Gadgets::DLL::DLLHolder(name, "");
    try {
        return holder->resolve<Rows()>("benchmarkRows")();
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string(name) + " cannot be loaded: " + error.what());
    }
}

void prove(const std::vector<Row>& rows) {
    std::map<std::string, std::size_t> bytesOf;
    for (const Row& row : rows) {
        if (row.deliver == nullptr) {
            continue;
        }
        if (row.prepare != nullptr) {
            row.prepare();
        }
        const std::size_t bytes = row.deliver(lines);
        if (row.finish != nullptr) {
            row.finish();
        }
        const std::size_t expected = bytesOf.emplace(row.work.name, bytes).first->second;
        if (bytes != expected) {
            throw std::runtime_error(std::string(row.work.name) + ": " + row.subject +
                                     " delivers " + std::to_string(bytes) + " bytes, others " +
                                     std::to_string(expected));
        }
    }
}

} // namespace

std::vector<Row> allRows(const std::string& expression) {
    std::vector<Rows> parts = {plainTextRows(),    typedLineRows(),    levelOffRows(),
                               loggerByNameRows(), propertyRows(),     namedObjectRows(),
                               counterRows(),      randomNumberRows(), stringRows(),
                               heapRows(),         registryRows()};
    // Not where a log of somebody else's may be.
    if (std::getenv("ZOL_BENCHMARK_CRISIS_LOG") != nullptr) {
        parts.push_back(crisisLogRows());
    }
    for (const char* peer : peers) {
        parts.push_back(loadPeer(peer));
    }

    // The C library spares a process that has never had a second thread most of the cost of locks,
    // so which rows there are would decide how long the others take.
    std::thread([] {}).join();

    std::vector<Row> rows = wantedRows(parts, expression);
    prove(rows);
    return rows;
}

} // namespace benchmarks
