#include "LineFile.h"

#include <cstring>
#include <ctime>
#include <stdexcept>

namespace benchmarks {

namespace {

constexpr std::size_t maxLine = 512;

/// Appends to a line on the stack.
class Line {
public:
    Line& operator<<(std::string_view text) {
        if (text.size() > maxLine - size_) {
            throw std::length_error("the line is too long");
        }
        std::memcpy(bytes_ + size_, text.data(), text.size());
        size_ += text.size();
        return *this;
    }

    std::string_view text() const { return {bytes_, size_}; }

private:
    char bytes_[maxLine];
    std::size_t size_ = 0;
};

} // namespace

LineFile::LineFile(const char* path, bool isFlushed)
    : file_(path), buffer_(isFlushed ? nullptr : new char[bufferSize]()) {}

LineFile::~LineFile() {
    flush();
}

void LineFile::logInfo(const char* logger, const char* text) {
    using namespace std::chrono;
    const boost::recursive_mutex::scoped_lock locked(lock_);
    const auto now = duration_cast<milliseconds>(system_clock::now().time_since_epoch());
    const auto second = duration_cast<seconds>(now);
    if (second != second_) {
        formatDate(second);
    }
    const auto rest = static_cast<int>((now - second).count());
    const char fraction[] = {'.', static_cast<char>('0' + rest / 100),
                             static_cast<char>('0' + rest / 10 % 10),
                             static_cast<char>('0' + rest % 10)};
    Line line;
    line << std::string_view(date_, dateSize) << std::string_view(fraction, sizeof(fraction))
         << " INFO [" << logger << "] " << text << AppendedFile::lineEnd;
    if (buffer_ == nullptr) {
        file_.append(line.text());
    } else {
        buffer(line.text());
    }
}

void LineFile::formatDate(std::chrono::seconds second) {
    const auto time = static_cast<std::time_t>(second.count());
    if (std::strftime(date_, sizeof(date_), "%Y-%m-%d %H:%M:%S", std::localtime(&time)) !=
        dateSize) {
        throw std::runtime_error("the date cannot be formatted");
    }
    second_ = second;
}

void LineFile::buffer(std::string_view line) {
    if (line.size() > bufferSize - buffered_) {
        flush();
    }
    std::memcpy(buffer_.get() + buffered_, line.data(), line.size());
    buffered_ += line.size();
}

void LineFile::flush() {
    if (buffered_ != 0) {
        file_.append({buffer_.get(), buffered_});
        buffered_ = 0;
    }
}

} // namespace benchmarks
