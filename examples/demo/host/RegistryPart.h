#pragma once

#include <ostream>

#include "host/Options.h"
#include "host/Run.h"

namespace Demo {

/// The demo's second part: exports a tree of the registry to another place, lists the copy, and
/// shows what each kind of error says. Everything that it makes is gone afterwards. There is no
/// registry on Linux, and nothing of this.
class RegistryPart {
public:
    /// Throws std::runtime_error if the options name a key that cannot be opened.
    explicit RegistryPart(const Options& options);

    /// Throws std::runtime_error if the tree cannot be exported, or not completely.
    void run(std::ostream& out, const RunReport& report) const;

private:
    Options options_;
};

} // namespace Demo
