# Compiles the product's sources for Visual C++'s binary interface, as a build for Windows that is
# not MinGW's. There is nothing to link against.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR AMD64)

set(CMAKE_CXX_COMPILER clang++-19)
set(CMAKE_CXX_FLAGS_INIT --config=${CMAKE_CURRENT_LIST_DIR}/target.cfg)
set(CMAKE_AR llvm-ar-19)
set(CMAKE_RC_COMPILER llvm-rc-19)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_MODULE_PATH ${CMAKE_CURRENT_LIST_DIR}/packages)
