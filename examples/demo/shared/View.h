#pragma once

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/Management/PropertyManager.h"
#include "shared/Position.h"

namespace Demo {

struct CounterView {
    const ZOL::Framework::Counting::Counter* counter;
    int value;
};

/// What one side, host or module, gets from the framework under the names that all share.
struct View {
    const ZOL::Framework::GenericLogger::Logger* readerLogger;
    const ZOL::Framework::GenericLogger::Logger* auditorLogger;
    CounterView messages;
    CounterView alerts;
    const Position* position;
    int positionsMade; ///< by this side
    const ZOL::Framework::Management::WideString* alertLevel;
    const ZOL::Framework::Management::WideString* lineEnd;
};

View viewOfThisSide();

} // namespace Demo
