#include <vcruntime_typeinfo.h>

// What the compiler refers to in every type information that it emits.

extern "C" __declspec(align(16)) __type_info_node* __type_info_root_node[2] = {nullptr, nullptr};

type_info::~type_info() noexcept {}

// The class's table of virtual functions, by its decorated name: clang emits it for nobody. Its
// only slot is the destructor, which is never called.
extern "C" const void* const zol_typeInfoTable[1] __asm__("??_7type_info@@6B@") = {nullptr};
