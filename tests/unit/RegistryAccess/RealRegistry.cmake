# Linked with the library alone. One test loads the framework module.
add_executable(zol_registry_tests
    real/AccessDeniedTest.cpp
    real/CopyTest.cpp
    real/FrameworkModuleTest.cpp
    real/HandlesTest.cpp
    real/ListingTest.cpp
    real/NodeTest.cpp
    real/OtherErrorsTest.cpp
    real/OutsideProgram.cpp
    real/OutsideProgramsTest.cpp
    real/RegistryFixture.cpp
    real/ValuesTest.cpp)
target_link_libraries(zol_registry_tests PRIVATE zol_test_support ZOL::RegistryAccess)
add_dependencies(zol_registry_tests ZOL_Framework)
zol_add_tests(zol_registry_tests)
