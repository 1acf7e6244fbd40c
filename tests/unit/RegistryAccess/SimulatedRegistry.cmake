# There is no registry here: the sources of the registry access are built against headers of their
# own, behind which a registry lies in memory.
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
    Simulated/CopyFromTest.cpp
    Simulated/CopyValuesFromTest.cpp
    Simulated/EveryCallFailsTest.cpp
    Simulated/GetStringValueTest.cpp
    Simulated/GetSubKeysTest.cpp
    Simulated/HandleHolderTest.cpp
    Simulated/NativeTextTest.cpp
    Simulated/NodeCell.cpp
    Simulated/NodeTest.cpp
    Simulated/Operations.cpp
    Simulated/OutOfMemoryTest.cpp
    Simulated/RegistryErrorTest.cpp
    Simulated/RegistryTest.cpp
    Simulated/SimulatedRegistryTest.cpp
    Simulated/ThrowSiteTest.cpp
    Simulated/ThrowSites.cpp
    Simulated/ThrowSitesTest.cpp
    Simulated/Thrown.cpp
    Simulated/UninitializedNodeTest.cpp
    Simulated/UpdateValueTest.cpp
    Simulated/ValueLookupTest.cpp)
target_sources(zol_registry_tests PRIVATE ${ZOL_REGISTRY_ACCESS_SOURCES} ${registry_simulation})
target_include_directories(zol_registry_tests PRIVATE ${registry_includes})
target_link_libraries(zol_registry_tests PRIVATE zol_settings zol_boost_thread zol_gtest_main)
zol_add_tests(zol_registry_tests)

# Random sequences of operations beside a model of them.
if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang" AND NOT ZOL_SANITIZE MATCHES "thread")
    add_executable(zol_registry_fuzzer
        Fuzz/Input.cpp
        Fuzz/Model.cpp
        Fuzz/RegistryFuzzer.cpp
        Fuzz/Run.cpp
        Simulated/NodeCell.cpp
        Simulated/Thrown.cpp)
    target_sources(zol_registry_fuzzer PRIVATE ${ZOL_REGISTRY_ACCESS_SOURCES} ${registry_simulation})
    target_include_directories(zol_registry_fuzzer PRIVATE ${registry_includes} Simulated)
    target_link_libraries(zol_registry_fuzzer PRIVATE zol_settings zol_boost_thread)
    zol_add_fuzzer(zol_registry_fuzzer 60000
        RegistryFuzzer.FindsNoSequenceOfOperationsThatTheModelDoesNotForetell
        ${CMAKE_CURRENT_SOURCE_DIR}/Fuzz/corpus)
endif()
