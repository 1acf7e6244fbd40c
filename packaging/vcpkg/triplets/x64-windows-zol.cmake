# Not run: written after vcpkg's documentation. Libraries that are linked in, the compiler's runtime
# shared by all modules, and no iterator debugging, which changes the strings that cross modules.
set(VCPKG_TARGET_ARCHITECTURE x64)
set(VCPKG_CRT_LINKAGE dynamic)
set(VCPKG_LIBRARY_LINKAGE static)

set(VCPKG_C_FLAGS "")
set(VCPKG_CXX_FLAGS "")
set(VCPKG_C_FLAGS_DEBUG "")
set(VCPKG_CXX_FLAGS_DEBUG "/D_ITERATOR_DEBUG_LEVEL=0")

# CMake 4 rejects the oldest version that some of the ports still ask for.
set(VCPKG_CMAKE_CONFIGURE_OPTIONS -DCMAKE_POLICY_VERSION_MINIMUM=3.5)
