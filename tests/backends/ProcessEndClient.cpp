// A program that logs numbered lines through RotatingFile and ends in a given way:
//
//   ProcessEndClient END FLUSH COMPRESS THREADS MICROSECONDS
//
// Each thread writes "thread number" with numbers from 1 on, and keeps the number of its last
// statement that has returned in the file acknowledged.THREAD, which survives any end. The file
// begun is there from the begin of main on. Threads log on while the process ends. The last words
// of a static object and of a function of the exit table are "last words" and "exit".

#include <atomic>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "EndProcess.h"
#include "Property.h"

using ZOL::Framework::GenericLogger::Logger;

namespace {

std::atomic<bool> isStopped = false;
std::atomic<int> busyThreads = 0;

/// Logs when the static objects of the program are destroyed.
struct LastWords {
    LastWords() = default;
    LastWords(const LastWords&) = delete;
    LastWords& operator=(const LastWords&) = delete;
    ~LastWords() { Logger::getLogger("x")->info("last words"); }
};
const LastWords lastWords;

/// The framework is gone soon: no other thread logs any more, unless the system ends it.
void stopThreads() {
    Logger::getLogger("x")->info("exit");
    isStopped = true;
    while (busyThreads != 0) {
        std::this_thread::yield();
    }
}

void writeLines(int thread, std::chrono::steady_clock::time_point end) {
    std::ofstream acknowledged("acknowledged." + std::to_string(thread), std::ios::binary);
    Logger* const logger = Logger::getLogger("x");
    const std::string prefix = std::to_string(thread) + " ";
    for (std::uint64_t number = 1; !isStopped && std::chrono::steady_clock::now() < end; ++number) {
        logger->info((prefix + std::to_string(number)).c_str());
        acknowledged.seekp(0);
        acknowledged.write(reinterpret_cast<const char*>(&number), sizeof(number));
        acknowledged.flush();
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 6) {
        std::cerr << "usage: ProcessEndClient END FLUSH COMPRESS THREADS MICROSECONDS\n";
        return 1;
    }
    static_cast<void>(std::ofstream("begun"));
    const std::string end = argv[1];
    setProperty("RotatingFile.pattern", "%v");
    setProperty("RotatingFile.size", "64K");
    setProperty("RotatingFile.count", "0");
    setProperty("RotatingFile.flush", argv[2]);
    setProperty("RotatingFile.compress", argv[3]);
    Logger::installBackend("RotatingFile");
    std::atexit(stopThreads);
    const int threads = std::atoi(argv[4]);
    const auto now = std::chrono::steady_clock::now();
    for (int i = 1; i < threads; ++i) {
        ++busyThreads;
        std::thread([i, now] {
            writeLines(i, now + std::chrono::hours(1));
            --busyThreads;
            // Wine may hang if it kills a thread that is just ending.
            std::this_thread::sleep_for(std::chrono::hours(1));
        }).detach();
    }
    writeLines(0, now + std::chrono::microseconds(std::atoi(argv[5])));
    if (end == "exitOfThread") {
        std::thread([] { std::exit(3); }).join();
    }
    endProcess(end);
    return 3;
}
