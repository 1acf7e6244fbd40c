#include <cstdlib>
#include <stdexcept>
#include <string>
#include <thread>

#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include "Driver.h"
#include "rows/Rows.h"

// Measures the rows in rows/ and those of all peers, in one process.

namespace benchmarks {

namespace {

constexpr const char* peers[] = {BENCHMARK_PEERS};

Rows loadPeer(const char* name) {
    // Stays loaded: it contains the rows.
    const auto* const holder = new ZOL::Gadgets::DLL::DLLHolder(name, "");
    try {
        return holder->resolve<Rows()>("benchmarkRows")();
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string(name) + " cannot be loaded: " + error.what());
    }
}

} // namespace

void measureAll() {
    std::vector<Rows> parts = {plainTextRows(),    typedLineRows(),    levelOffRows(),
                               loggerByNameRows(), propertyRows(),     namedObjectRows(),
                               counterRows(),      randomNumberRows(), stringRows(),
                               heapRows(),         registryRows()};
    // The crisis log of the machine may be in use: only on request.
    if (std::getenv("ZOL_BENCHMARK_CRISIS_LOG") != nullptr) {
        parts.push_back(crisisLogRows());
    }
    for (const char* peer : peers) {
        parts.push_back(loadPeer(peer));
    }
    std::vector<Row> rows;
    for (const Rows& part : parts) {
        rows.insert(rows.end(), part.first, part.first + part.count);
    }

    // Locks are cheaper in a process that has never had a second thread. Start one, so that the
    // times do not depend on whether an earlier row used two.
    std::thread([] {}).join();

    measure(rows);
}

} // namespace benchmarks
