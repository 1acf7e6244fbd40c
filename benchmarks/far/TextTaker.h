#pragma once

#include "Export.h"
#include "FarSide.h"

namespace benchmarks {

/// Takes texts and forgets them: what the discarding back end does, without a
/// framework in front.
class TextTaker {
public:
    virtual ~TextTaker() = default;
    virtual void take(int level, const char* text) = 0;
    virtual FarSide& farSide() = 0;
};

/// The only one.
BENCHMARKS_FAR TextTaker& textTaker();

} // namespace benchmarks
