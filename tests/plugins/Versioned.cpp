#include "ZOL/Framework/Export.h"

extern "C" ZOL_BACKEND_EXPORT int seven() {
    return 7;
}
