#pragma once

// As in Microsoft's header, functions that do not check their arguments are deprecated.

#pragma GCC system_header
#include_next <string.h>

#if !defined(_CRT_SECURE_NO_WARNINGS)
extern "C" {
__declspec(deprecated) char* __cdecl strcat(char*, const char*);
__declspec(deprecated) char* __cdecl strcpy(char*, const char*);
__declspec(deprecated) char* __cdecl strerror(int);
__declspec(deprecated) char* __cdecl strncat(char*, const char*, size_t);
__declspec(deprecated) char* __cdecl strncpy(char*, const char*, size_t);
__declspec(deprecated) char* __cdecl strtok(char*, const char*);
}
#endif
