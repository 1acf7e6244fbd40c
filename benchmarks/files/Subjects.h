#pragma once

#include "../FileSubject.h"

namespace benchmarks {

FileSubject fileFloor();
FileSubject fileProduct();

} // namespace benchmarks
