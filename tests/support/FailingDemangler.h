#pragma once

namespace support {

/// From now on, the C++ runtime has no memory to tell a readable name of a type, or has some again.
/// It takes it from the C library's heap, past operator new.
void failDemangling(bool fails);

} // namespace support
