#pragma once

namespace support {

/// From now on, abi::__cxa_demangle fails for lack of memory, or works again.
/// It allocates with malloc, not with operator new.
void failDemangling(bool fails);

} // namespace support
