#pragma once

/// Moves the wall clock of this process, as plug-ins see it too, ahead by that many hours.
void shiftClock(int hours);
