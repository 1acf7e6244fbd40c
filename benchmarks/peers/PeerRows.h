#pragma once

#include "../Names.h"
#include "../TwoThreads.h"
#include "../Works.h"
#include "Peer.h"

namespace benchmarks {

/// The rows of a peer that needs no more than this for its works: a struct with the static
/// functions runText, runLine, runAsked, runOffLine, prepareNames, runNames and taken, the last for
/// how many bytes have come out so far. To be called once in a module, which is one subject.
template <typename Peer>
Rows rowsOfPeer(const char* subject) {
    static const Row rows[] = {
        {plainText, Role::Peer, subject, Peer::runText, nullptr, nullptr,
         delivered<Peer::runText, Peer::taken>},
        {plainTextTwoThreads, Role::Peer, subject, onTwoThreads<Peer::runText>, nullptr, nullptr,
         delivered<onTwoThreads<Peer::runText>, Peer::taken>},
        {typedLine, Role::Peer, subject, Peer::runLine, nullptr, nullptr,
         delivered<Peer::runLine, Peer::taken>},
        {levelAsked, Role::Peer, subject, Peer::runAsked},
        {levelOffLine, Role::Peer, subject, Peer::runOffLine, nullptr, nullptr,
         delivered<Peer::runOffLine, Peer::taken>},
        {shortNames, Role::Peer, subject, Peer::template runNames<shortNameLength>,
         Peer::prepareNames},
        {longNames, Role::Peer, subject, Peer::template runNames<longNameLength>,
         Peer::prepareNames},
    };
    return rowsOf(rows);
}

} // namespace benchmarks
