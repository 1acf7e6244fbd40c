#pragma once

#include "windows.h"

extern "C" LONG SHDeleteKeyA(HKEY parent, const char* path);
