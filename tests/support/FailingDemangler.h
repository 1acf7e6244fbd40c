#pragma once

namespace support {

/// From now on, abi::__cxa_demangle fails for lack of memory, or works again.
/// It takes it from the C library's heap, past operator new.
void failDemangling(bool fails);

} // namespace support
