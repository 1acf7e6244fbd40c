#include <windows.h>

// The entry function of a DLL that defines none.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD, LPVOID) {
    return TRUE;
}
