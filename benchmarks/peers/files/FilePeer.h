#pragma once

#include "../../FileSubject.h"
#include "../../Subject.h"
#include "../Peer.h"

/// A peer that writes into a file is a module that exports this function, which stores the subject.
BENCHMARKS_PEER void benchmarkFileSubject(benchmarks::FileSubject& subject);
