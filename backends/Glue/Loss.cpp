#include "Loss.h"

#include "Complaint.h"

namespace ZOL::Backends {

void Loss::add(std::string_view reason) noexcept {
    if (++count_ > 1) {
        return;
    }
    try {
        complain(backend_, "messages are being lost: " + std::string(reason));
    } catch (...) {
        complain(backend_, "messages are being lost");
    }
}

void Loss::end() noexcept {
    if (count_ == 0) {
        return;
    }
    try {
        complain(backend_, "works again, lost messages: " + std::to_string(count_));
    } catch (...) {
        complain(backend_, "works again");
    }
    count_ = 0;
}

void Loss::tell() const noexcept {
    if (count_ == 0) {
        return;
    }
    try {
        complain(backend_, "the process ends, lost messages: " + std::to_string(count_));
    } catch (...) {
        complain(backend_, "the process ends, and messages are lost");
    }
}

} // namespace ZOL::Backends
