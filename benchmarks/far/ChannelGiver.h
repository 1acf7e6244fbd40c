#pragma once

#include "Export.h"

namespace benchmarks {

class TextTaker;

/// Gives out a channel for a name: what the discarding back end does, without a framework in front.
class ChannelGiver {
public:
    virtual ~ChannelGiver() = default;
    virtual TextTaker* channelFor(const char* name) = 0;
};

/// The only one.
BENCHMARKS_FAR ChannelGiver& channelGiver();

} // namespace benchmarks
