#pragma once

// Wine has no such header. Boost asks it for the SDK's age; this is what the SDKs of Windows 10
// say.
#define VER_PRODUCTBUILD 10011
