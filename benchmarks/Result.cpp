#include "Result.h"

#include <cstdio>

namespace benchmarks {

namespace {

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

void writeRow(const Row& row) {
    std::printf("%s\t%s\t%s", row.work.name, nameOf(row.role), row.subject);
}

} // namespace

void writeRows(const std::vector<Row>& rows) {
    for (const Row& row : rows) {
        writeRow(row);
        std::printf("\n");
    }
}

void writeResult(const Row& row, long repetition, double nanoseconds) {
    writeRow(row);
    std::printf("\t%ld\t%.3f\n", repetition, nanoseconds);
}

} // namespace benchmarks
