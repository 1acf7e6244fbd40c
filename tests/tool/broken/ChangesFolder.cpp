// Goes where its file is.

#include <filesystem>

#include "Parts.h"

class Backend : public BackendWith<Channel> {
public:
    Backend() { std::filesystem::current_path(std::filesystem::temp_directory_path()); }
};

extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend() {
    return theBackend<Backend>();
}
