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

#if defined(_MSC_VER)

// The ABI of Visual C++ has one destructor slot. A parameter of its function says whether to free
// the object after the destruction.
constexpr std::size_t firstSlotAfterDestructor = 1;

inline void destroyThroughSlot(void* object) {
    SlotProbe(object).at<void*(void*, unsigned)>(0)(object, 0);
}

inline void deleteThroughSlot(void* object) {
    SlotProbe(object).at<void*(void*, unsigned)>(0)(object, 1);
}

#else

// The Itanium ABI has two destructor slots, the second of which frees the object too.
constexpr std::size_t firstSlotAfterDestructor = 2;

inline void destroyThroughSlot(void* object) {
    SlotProbe(object).at<void(void*)>(0)(object);
}

inline void deleteThroughSlot(void* object) {
    SlotProbe(object).at<void(void*)>(1)(object);
}

#endif

} // namespace support
