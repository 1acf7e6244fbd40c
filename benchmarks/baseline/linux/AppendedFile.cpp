#include <stdexcept>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include "../LineFile.h"

namespace benchmarks {

const std::string_view AppendedFile::lineEnd = "\n";

AppendedFile::AppendedFile(const char* path)
    : handle_(::open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0640)) {
    if (handle_ == -1) {
        throw std::runtime_error(std::string("cannot open ") + path);
    }
}

AppendedFile::~AppendedFile() {
    ::close(static_cast<int>(handle_));
}

void AppendedFile::append(std::string_view bytes) {
    if (::write(static_cast<int>(handle_), bytes.data(), bytes.size()) !=
        static_cast<ssize_t>(bytes.size())) {
        throw std::runtime_error("cannot write a line");
    }
}

} // namespace benchmarks
