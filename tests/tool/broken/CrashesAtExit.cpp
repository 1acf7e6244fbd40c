// Its end uses what is not there.

#include "Parts.h"

volatile int* volatile nowhere = nullptr;

struct Ending {
    ~Ending() { *nowhere = 1; }
};
Ending ending;

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<BackendWith<Channel>>();
}
