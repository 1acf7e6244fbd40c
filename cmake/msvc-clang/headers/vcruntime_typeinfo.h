#pragma once

// type_info as Visual C++'s compiler and runtime use it. Its destructor is in runtime/TypeInfo.cpp.

#pragma GCC system_header
#include <vcruntime_exception.h>

struct __std_type_info_data {
    const char* _UndecoratedName;
    const char _DecoratedName[1];
    __std_type_info_data() = delete;
    __std_type_info_data(const __std_type_info_data&) = delete;
    __std_type_info_data& operator=(const __std_type_info_data&) = delete;
};

// The list of names that the runtime has undecorated.
struct __type_info_node;
extern "C" {
extern __type_info_node* __type_info_root_node[2];
int __cdecl __std_type_info_compare(const __std_type_info_data* left,
                                    const __std_type_info_data* right);
size_t __cdecl __std_type_info_hash(const __std_type_info_data* data);
const char* __cdecl __std_type_info_name(__std_type_info_data* data, void* rootNode);
void __cdecl __std_type_info_destroy_list(void* rootNode);
}

class type_info {
public:
    type_info(const type_info&) = delete;
    type_info& operator=(const type_info&) = delete;
    virtual ~type_info() noexcept;

    size_t hash_code() const noexcept { return __std_type_info_hash(&_Data); }
    bool operator==(const type_info& other) const noexcept {
        return __std_type_info_compare(&_Data, &other._Data) == 0;
    }
    bool operator!=(const type_info& other) const noexcept { return !(*this == other); }
    bool before(const type_info& other) const noexcept {
        return __std_type_info_compare(&_Data, &other._Data) < 0;
    }
    const char* name() const noexcept {
        return __std_type_info_name(&_Data, __type_info_root_node);
    }
    const char* raw_name() const noexcept { return _Data._DecoratedName; }

private:
    mutable __std_type_info_data _Data;
};

namespace std {

using ::type_info;

class bad_cast : public exception {
public:
    bad_cast() noexcept : exception("bad cast", 1) {}
};

class bad_typeid : public exception {
public:
    bad_typeid() noexcept : exception("bad typeid", 1) {}
};

} // namespace std
