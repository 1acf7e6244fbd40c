# Linux has no registry: the sources of the registry access are built against a <windows.h> that is
# implemented by a registry in memory.
set(simulation ${PROJECT_SOURCE_DIR}/tests/support/registry)
set(registry_simulation
    ${PROJECT_SOURCE_DIR}/tests/support/FailingAllocator.cpp
    ${simulation}/HandleTable.cpp
    ${simulation}/RegistryFunctions.cpp
    ${simulation}/RegistryTree.cpp
    ${simulation}/ShowText.cpp
    ${simulation}/SimulatedRegistry.cpp)
set(registry_includes
    ${simulation}
    ${PROJECT_SOURCE_DIR}/include
    ${PROJECT_SOURCE_DIR}/src
    ${PROJECT_SOURCE_DIR}/tests/support)

add_executable(zol_registry_tests
    ${PROJECT_SOURCE_DIR}/tests/support/FailingDemangler.cpp
    ${PROJECT_SOURCE_DIR}/tests/support/OutOfMemory.cpp
    simulated/CopyFromTest.cpp
    simulated/CopyValuesFromTest.cpp
    simulated/EachThrowSiteTest.cpp
    simulated/EveryCallFailsTest.cpp
    simulated/GetStringValueTest.cpp
    simulated/GetSubKeysTest.cpp
    simulated/HandleHolderTest.cpp
    simulated/NativeTextTest.cpp
    simulated/NodeCell.cpp
    simulated/NodeTest.cpp
    simulated/Operations.cpp
    simulated/OutOfMemoryTest.cpp
    simulated/RegistryErrorTest.cpp
    simulated/RegistryTest.cpp
    simulated/SimulatedRegistryTest.cpp
    simulated/ThrowSiteTable.cpp
    simulated/ThrowSiteTest.cpp
    simulated/Thrown.cpp
    simulated/UninitializedNodeTest.cpp
    simulated/UpdateValueTest.cpp
    simulated/ValueLookupTest.cpp)
target_sources(zol_registry_tests PRIVATE ${ZOL_REGISTRY_ACCESS_SOURCES} ${registry_simulation})
target_include_directories(zol_registry_tests PRIVATE ${registry_includes})
target_link_libraries(zol_registry_tests PRIVATE zol_settings zol_boost_thread zol_gtest_main)
zol_add_tests(zol_registry_tests)

# Compares random sequences of operations with a model.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NOT ZOL_SANITIZE MATCHES "thread")
    add_executable(zol_registry_fuzzer
        fuzz/Model.cpp
        fuzz/OperationInput.cpp
        fuzz/RegistryFuzzer.cpp
        fuzz/Run.cpp
        simulated/NodeCell.cpp
        simulated/Thrown.cpp)
    target_sources(zol_registry_fuzzer PRIVATE ${ZOL_REGISTRY_ACCESS_SOURCES} ${registry_simulation})
    target_include_directories(zol_registry_fuzzer PRIVATE ${registry_includes} simulated)
    target_link_libraries(zol_registry_fuzzer PRIVATE zol_settings zol_boost_thread)
    zol_add_fuzzer(zol_registry_fuzzer 60000
        RegistryFuzzer.EveryOperationDoesWhatTheModelDoes
        ${CMAKE_CURRENT_SOURCE_DIR}/fuzz/corpus)
endif()
