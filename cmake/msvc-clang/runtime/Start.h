#pragma once

#include <corecrt_startup.h>

// What a module does before and after its own code runs.

extern "C" {

// The functions for the end of this image. Null in a program: they are then the process's.
extern _onexit_table_t* zol_exitTable;

void zol_initializeSecurityCookie();

// Runs the constructors of static objects. Returns whether all initializers succeeded.
bool zol_runInitializers();

// Runs the constructors of the calling thread's objects, unless they have run.
void __cdecl __dyn_tls_on_demand_init();
}
