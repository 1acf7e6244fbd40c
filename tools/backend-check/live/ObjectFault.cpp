#include "live/ObjectFault.h"

#include <cstdint>

#include <cxxabi.h>

#include "live/ThisProcess.h"

namespace backendcheck {

namespace {

const void* wordAt(const void* address, std::ptrdiff_t index) {
    return static_cast<const void* const*>(address)[index];
}

bool isTable(const void* table, std::size_t slots) {
    constexpr std::size_t word = sizeof(void*);
    return reinterpret_cast<std::uintptr_t>(table) % word == 0 &&
           isReadable(static_cast<const char*>(table) - 2 * word, (slots + 2) * word);
}

/// Null if the class was compiled without run-time type information, or if the table was made by
/// hand.
const std::type_info* classOf(const void* table) {
    const void* const info = wordAt(table, -1);
    constexpr std::size_t nameAndTable = 2 * sizeof(void*);
    if (info == nullptr || !isReadable(info, nameAndTable) || !isTable(wordAt(info, 0), 1) ||
        !isCode(wordAt(wordAt(info, 0), 0)) || !isReadable(wordAt(info, 1), 1)) {
        return nullptr;
    }
    return static_cast<const std::type_info*>(info);
}

} // namespace

std::string objectFault(const void* object, const std::type_info& base, std::size_t slots) {
    if (reinterpret_cast<std::uintptr_t>(object) % alignof(void*) != 0 ||
        !isReadable(object, sizeof(void*))) {
        return "is an address where there is no object";
    }
    if (isOnThisStack(object)) {
        return "is a local variable, which is gone when the function has returned";
    }
    const void* const table = wordAt(object, 0);
    if (!isTable(table, slots)) {
        return "has no virtual table: it was destroyed, or is of a class without virtual functions";
    }
    for (std::size_t slot = 0; slot < slots; ++slot) {
        const void* const function = wordAt(table, static_cast<std::ptrdiff_t>(slot));
        if (!isCode(function)) {
            return "has no code in slot " + std::to_string(slot) +
                   " of its virtual table: it was destroyed, or is of another class";
        }
        if (function == reinterpret_cast<const void*>(&abi::__cxa_pure_virtual)) {
            return "has nothing but a pure function in slot " + std::to_string(slot) +
                   " of its virtual table: it was destroyed already";
        }
    }
    const std::type_info* const mostDerived = classOf(table);
    if (mostDerived == nullptr) {
        return {};
    }
    // Where the base is in the whole object, by what the class tells of itself.
    const auto distance = reinterpret_cast<std::ptrdiff_t>(wordAt(table, -2));
    void* part = const_cast<char*>(static_cast<const char*>(object) + distance);
    if (!mostDerived->__do_upcast(static_cast<const abi::__class_type_info*>(&base), &part)) {
        return "is of a class that is not derived from it";
    }
    if (part != object) {
        return "is a pointer to another of its bases: return it as the base class, without a cast";
    }
    return {};
}

} // namespace backendcheck
