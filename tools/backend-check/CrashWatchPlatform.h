#pragma once

#include "Journal.h"

namespace backendcheck {

/// The platform's part of watchForCrashes.
void catchCrashes(Journal& journal);

} // namespace backendcheck
