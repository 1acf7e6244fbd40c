// Another library.

#include "ZOL/Framework/Export.h"

extern "C" ZOL_BACKEND_EXPORT int helpWithBackend();

extern "C" int helpWithBackend() {
    return 1;
}
