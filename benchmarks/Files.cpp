// BenchmarkFiles list
//     writes the names of all rows, "workload | subject", one a line
// BenchmarkFiles measure ROW FILE LINES
//     writes so many lines into a new file, and the times of single statements as JSON
//
// Measures how long a statement takes that writes a line into a file. Unlike in Driver.h, the
// times of all statements count, not only their mean, and each measurement has a process of its
// own: no subject shares threads, memory or caches with another one. scripts/bench.sh starts them
// in turns, and counts the lines in the file after the end of the process.

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "ZOL/Gadgets/DLL/DLLHolder.h"

#include "FileSubject.h"
#include "files/Subjects.h"

namespace benchmarks {

namespace {

struct FileWorkload {
    const char* name;
    bool isFlushed;
    std::size_t threads;
};

constexpr FileWorkload workloads[] = {
    {"a line into a file, flushed, one thread", true, 1},
    {"a line into a file, flushed, four threads", true, 4},
    {"a line into a file, unflushed, one thread", false, 1},
    {"a line into a file, unflushed, four threads", false, 4},
};

/// One line of so many is written before the measurement. The first one opens the file.
constexpr std::size_t warmUpFraction = 100;

struct Source {
    const char* subject;
    const char* role;
    FileSubject (*load)(const char* module);
    const char* module; ///< of a peer
};

FileSubject floorSubject(const char*) {
    return fileFloor();
}

FileSubject productSubject(const char*) {
    return fileProduct();
}

FileSubject peerSubject(const char* module) {
    // Stays loaded: it contains the functions of the subject.
    const auto* const holder = new ZOL::Gadgets::DLL::DLLHolder(module, "");
    FileSubject subject = {};
    holder->resolve<void(FileSubject&)>("benchmarkFileSubject")(subject);
    return subject;
}

/// A peer, as CMakeLists.txt names it.
constexpr Source peer(const char* subject, const char* module) {
    return {subject, "peer", peerSubject, module};
}

constexpr Source sources[] = {
    {"floor", "floor", floorSubject, nullptr},
    {"ZOL", "product", productSubject, nullptr},
    BENCHMARK_FILE_PEERS,
};

struct Row {
    const FileWorkload& workload;
    const Source& source;

    std::string name() const { return std::string(workload.name) + " | " + source.subject; }
};

std::vector<Row> allRows() {
    std::vector<Row> rows;
    for (const FileWorkload& workload : workloads) {
        for (const Source& source : sources) {
            rows.push_back({workload, source});
        }
    }
    return rows;
}

Row findRow(std::string_view name) {
    for (const Row& row : allRows()) {
        if (row.name() == name) {
            return row;
        }
    }
    throw std::runtime_error("there is no row " + std::string(name));
}

/// Logs the lines on so many threads at once, and returns how long each statement took.
std::vector<Ticks> logOnThreads(const FileSubject& subject, std::size_t threads,
                                std::size_t lines) {
    std::vector<Ticks> ticks(lines); // written here: a statement must not wait for a new page
    std::atomic<std::size_t> waiting = threads;
    const auto log = [&](std::size_t thread) {
        const std::size_t begin = lines * thread / threads;
        const std::size_t end = lines * (thread + 1) / threads;
        --waiting;
        while (waiting != 0) {
            std::this_thread::yield();
        }
        subject.log(end - begin, ticks.data() + begin);
    };
    std::vector<std::thread> others;
    for (std::size_t thread = 1; thread < threads; ++thread) {
        others.emplace_back(log, thread);
    }
    log(0);
    for (std::thread& other : others) {
        other.join();
    }
    return ticks;
}

/// The system has every line of a flushed file.
void checkFlushed(const char* path, std::size_t lines) {
    std::ifstream file(path, std::ios::binary);
    const auto count = static_cast<std::size_t>(
        std::count(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>(), '\n'));
    if (count != lines) {
        throw std::runtime_error(std::string(path) + " has " + std::to_string(count) +
                                 " lines after the last statement, not " + std::to_string(lines));
    }
}

/// The smallest value that at least this share of all values does not exceed.
Ticks percentile(const std::vector<Ticks>& sorted, double share) {
    const double rank = std::ceil(share * static_cast<double>(sorted.size()));
    return sorted[std::max<std::size_t>(static_cast<std::size_t>(rank), 1) - 1];
}

void write(const Row& row, std::vector<Ticks> ticks, double nanosecondsPerTick) {
    std::sort(ticks.begin(), ticks.end());
    const auto nanoseconds = [&](double share) {
        return static_cast<double>(percentile(ticks, share)) * nanosecondsPerTick;
    };
    std::printf("{\"row\": \"%s\", \"role\": \"%s\", \"p50\": %.1f, \"p99\": %.1f, "
                "\"p99.9\": %.1f, \"max\": %.1f}\n",
                row.name().c_str(), row.source.role, nanoseconds(0.5), nanoseconds(0.99),
                nanoseconds(0.999), nanoseconds(1));
    std::fflush(stdout);
}

void measure(const Row& row, const char* path, std::size_t lines) {
    const FileSubject subject = row.source.load(row.source.module);
    // Locks are cheaper in a process that has never had a second thread.
    std::thread([] {}).join();
    subject.open(path, row.workload.isFlushed);
    const std::size_t warmUpLines = lines / warmUpFraction;
    logOnThreads(subject, row.workload.threads, warmUpLines);
    const TickRate rate;
    std::vector<Ticks> ticks = logOnThreads(subject, row.workload.threads, lines - warmUpLines);
    const double nanosecondsPerTick = rate.nanosecondsPerTick();
    if (row.workload.isFlushed) {
        checkFlushed(path, lines);
    }
    subject.close();
    write(row, std::move(ticks), nanosecondsPerTick);
}

void run(const std::vector<std::string>& arguments) {
    if (arguments == std::vector<std::string>{"list"}) {
        for (const Row& row : allRows()) {
            std::cout << row.name() << '\n';
        }
    } else if (arguments.size() == 4 && arguments[0] == "measure") {
        measure(findRow(arguments[1]), arguments[2].c_str(), std::stoul(arguments[3]));
    } else {
        throw std::invalid_argument("usage: list, or measure ROW FILE LINES");
    }
}

} // namespace

} // namespace benchmarks

int main(int count, char** arguments) {
    try {
        benchmarks::run({arguments + 1, arguments + count});
    } catch (const std::exception& error) {
        std::fprintf(stderr, "BenchmarkFiles: %s\n", error.what());
        return 1;
    }
    return 0;
}
