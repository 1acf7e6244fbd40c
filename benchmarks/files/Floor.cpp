#include <memory>

#include "../Subject.h"
#include "../baseline/LineFile.h"
#include "Subjects.h"

namespace benchmarks {

namespace {

std::unique_ptr<LineFile> file;

void open(const char* path, bool isFlushed) {
    file = std::make_unique<LineFile>(path, isFlushed);
}

void close() {
    file.reset();
}

struct Floor {
    LineFile& target = *file;

    void logText() { target.logInfo(fileLogger, fortyCharacters); }
};

} // namespace

FileSubject fileFloor() {
    return {open, logTimed<Floor>, close};
}

} // namespace benchmarks
