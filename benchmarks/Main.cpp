#include <cstdio>
#include <exception>

#include "Driver.h"

int main(int count, char** arguments) {
    try {
        benchmarks::measureAll(benchmarks::readOptions(count, arguments));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "benchmarks: %s\n", error.what());
        return 1;
    }
    return 0;
}
