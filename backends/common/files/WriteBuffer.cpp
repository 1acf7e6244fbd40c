#include "files/WriteBuffer.h"

#include <new>

namespace ZOL::Backends {

bool WriteBuffer::add(std::string_view line) noexcept {
    if (line.size() > maxBytes_ - text_.size()) {
        return false;
    }
    try {
        text_.reserve(maxBytes_); // the first time
        text_.append(line);
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

void WriteBuffer::setBegin(std::size_t begin) noexcept {
    begin_ = begin;
    if (begin_ >= text_.size()) {
        text_.clear(); // in this order: text() is empty in between
        begin_ = 0;
    }
}

} // namespace ZOL::Backends
