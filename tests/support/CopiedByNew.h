#pragma once

#include <type_traits>
#include <utility>

namespace support {

/// Whether `new` can copy a T. Unlike std::is_copy_constructible, it needs no destructor.
template <typename T, typename = void>
inline constexpr bool canBeCopiedByNew = false;

template <typename T>
inline constexpr bool canBeCopiedByNew<T, std::void_t<decltype(new T(std::declval<const T&>()))>> =
    true;

} // namespace support
