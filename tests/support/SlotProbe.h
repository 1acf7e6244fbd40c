#pragma once

#include <cstddef>
#include <cstring>

namespace support {

/// The slots of an object's virtual table, as a caller built elsewhere uses them.
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

// Both compilers here keep two slots for a destructor, and then the operations in order.
constexpr std::size_t firstSlotBehindDestructor = 2;

} // namespace support
