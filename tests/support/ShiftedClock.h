#pragma once

namespace support {

/// Moves the wall clock of this process forward by that many hours, for every module in it.
void shiftClock(int hours);

} // namespace support
