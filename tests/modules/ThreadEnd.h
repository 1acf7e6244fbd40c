#pragma once

/// Has the function called at the end of the calling thread, once for each way by which a module
/// hears of it, with the way's name.
void atThreadEnd(void (*function)(const char* way));

/// To be called before the module that this is compiled into goes.
void forgetThreadEnds();
