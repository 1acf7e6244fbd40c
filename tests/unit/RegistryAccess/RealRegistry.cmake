# Linked with the library alone, and with nothing of the framework module, which one test loads.
add_executable(zol_registry_tests
    Real/AccessDeniedTest.cpp
    Real/CopyTest.cpp
    Real/FrameworkModuleTest.cpp
    Real/HandlesTest.cpp
    Real/ListingTest.cpp
    Real/NodeTest.cpp
    Real/OtherErrorsTest.cpp
    Real/OutsideProgram.cpp
    Real/OutsideProgramsTest.cpp
    Real/RegistryFixture.cpp
    Real/ValuesTest.cpp)
target_link_libraries(zol_registry_tests PRIVATE zol_test_support ZOL::RegistryAccess)
add_dependencies(zol_registry_tests ZOL_Framework)
zol_add_tests(zol_registry_tests)
