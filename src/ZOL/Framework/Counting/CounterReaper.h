#pragma once

namespace ZOL::Framework::Counting {

/// Deletes every counter when the module unloads.
class CounterReaper {
public:
    ~CounterReaper();
};

} // namespace ZOL::Framework::Counting
