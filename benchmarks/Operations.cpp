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

std::vector<Row> peerRows(const char* name) {
    // Stays loaded: it contains the functions of the rows.
    const auto* const holder = new ZOL::Gadgets::DLL::DLLHolder(name, "");
    try {
        std::vector<Row> rows;
        holder->resolve<void(std::vector<Row>&)>("benchmarkRows")(rows);
        return rows;
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(std::string(name) + " cannot be loaded: " + error.what());
    }
}

} // namespace

void measureAll() {
    std::vector<Row> rows;
    const auto add = [&](const std::vector<Row>& part) {
        rows.insert(rows.end(), part.begin(), part.end());
    };
    for (const auto& rowsOf : {loggingRows, statementRows, propertyRows, namedObjectRows,
                               counterRows, randomNumberRows, stringRows, heapRows, registryRows}) {
        add(rowsOf());
    }
    // The crisis log of the machine may be in use: only on request.
    if (std::getenv("ZOL_BENCHMARK_CRISIS_LOG") != nullptr) {
        add(crisisLogRows());
    }
    for (const char* peer : peers) {
        add(peerRows(peer));
    }

    // Locks are cheaper in a process that has never had a second thread. Start one, so that the
    // times do not depend on whether an earlier row used two.
    std::thread([] {}).join();

    measure(rows);
}

} // namespace benchmarks
