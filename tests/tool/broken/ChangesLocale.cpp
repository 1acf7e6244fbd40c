// Wants its numbers with a comma, and gets them for the whole process.

#include <clocale>

#include "Parts.h"

class Backend : public BackendWith<Channel> {
public:
    Backend() { std::setlocale(LC_ALL, "C.UTF-8"); }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<Backend>();
}
