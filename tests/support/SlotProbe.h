#pragma once

#include <cstddef>
#include <cstring>

namespace support {

/// Calls the slots of an object's virtual table by number, as code built apart does.
class SlotProbe {
public:
    explicit SlotProbe(const void* object) { std::memcpy(&slots_, object, sizeof(slots_)); }

    template <typename Function>
    Function* at(std::size_t slot) const {
        Function* function = nullptr;
        std::memcpy(&function, slots_ + slot, sizeof(function));
        return function;
    }

private:
    void* const* slots_ = nullptr;
};

// The Itanium ABI has two destructor slots, then the operations in order.
constexpr std::size_t firstSlotAfterDestructor = 2;

} // namespace support
