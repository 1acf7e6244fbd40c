#pragma once

#include "ZOL/Framework/Export.h"

namespace ZOL::Framework::GenericLogger::detail {

/// The static object of one statement, which each module has for itself: a module that is loaded
/// again starts with a new one. A State is initialized at compile time and has no destructor.
template <typename State, typename Statement>
struct ZOL_FRAMEWORK_HIDDEN StatementState {
    static State object;
};

template <typename State, typename Statement>
State StatementState<State, Statement>::object;

} // namespace ZOL::Framework::GenericLogger::detail

// The object of the statement that contains this expression. The type Statement is different in
// each lambda, and the same for all translation units that contain the same inline function.
#define ZOL_DETAIL_STATEMENT_STATE(State)                                                          \
    ([]() -> State& {                                                                              \
        struct Statement;                                                                          \
        return ::ZOL::Framework::GenericLogger::detail::StatementState<State, Statement>::object;  \
    }())
