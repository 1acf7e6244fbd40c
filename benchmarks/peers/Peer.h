#pragma once

#include "../Names.h"
#include "../Workloads.h"

/// A peer is a module that exports one function of this name and type. Each is loaded with local
/// symbols: two versions of one library would clash in one module.
#if defined(_WIN32)
#define BENCHMARKS_PEER extern "C" __declspec(dllexport)
#else
#define BENCHMARKS_PEER extern "C" __attribute__((visibility("default")))
#endif

BENCHMARKS_PEER benchmarks::Rows benchmarkRows();

namespace benchmarks {

/// The rows of a peer without special cases: a struct with the static functions runText, runLine,
/// runAsked, runOffLine, prepareNames, runNames and totalBytes, which returns how many bytes have
/// arrived in the sink so far. Call it once in a module, which is one subject.
template <typename Peer>
Rows rowsOfPeer(const char* subject) {
    static const Row rows[] = {
        {plainText, Role::Peer, subject, Peer::runText, nullptr, nullptr,
         delivered<Peer::runText, Peer::totalBytes>},
        {plainTextTwoThreads, Role::Peer, subject, onTwoThreads<Peer::runText>, nullptr, nullptr,
         delivered<onTwoThreads<Peer::runText>, Peer::totalBytes>},
        {typedLine, Role::Peer, subject, Peer::runLine, nullptr, nullptr,
         delivered<Peer::runLine, Peer::totalBytes>},
        {levelAsked, Role::Peer, subject, Peer::runAsked},
        {levelOffLine, Role::Peer, subject, Peer::runOffLine, nullptr, nullptr,
         delivered<Peer::runOffLine, Peer::totalBytes>},
        {shortNames, Role::Peer, subject, Peer::template runNames<shortNameLength>,
         Peer::prepareNames},
        {longNames, Role::Peer, subject, Peer::template runNames<longNameLength>,
         Peer::prepareNames},
    };
    return rowsOf(rows);
}

} // namespace benchmarks
