#include "../Platform.h"

#include <cstdio>

#include <windows.h>

#include <fcntl.h>
#include <io.h>
#include <share.h>
#include <sys/stat.h>

void blockSignal() {}

void changeUmask() {}

void replaceStandardError() {
    int file = -1;
    if (_sopen_s(&file, "own.log", _O_WRONLY | _O_CREAT, _SH_DENYNO, _S_IREAD | _S_IWRITE) == 0) {
        _dup2(file, 2);
        _close(file);
    }
}

void openForever(const char* name) {
    (void)_fsopen(name, "a", _SH_DENYNO);
}

void* mapMemory(std::size_t size) {
    return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}
