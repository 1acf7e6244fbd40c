# Not run: written after vcpkg's documentation. Builds the tree that this folder belongs to; use it
# with --overlay-ports, and with the triplet in packaging/vcpkg/triplets.

vcpkg_check_linkage(ONLY_DYNAMIC_LIBRARY)

get_filename_component(SOURCE_PATH "${CURRENT_PORT_DIR}/../../../.." ABSOLUTE)
vcpkg_cmake_configure(
    SOURCE_PATH "${SOURCE_PATH}"
    OPTIONS -DZOL_BUILD_BACKENDS=ON -DZOL_BUILD_EXAMPLES=OFF -DZOL_BUILD_TESTS=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(PACKAGE_NAME ZOL_Framework CONFIG_PATH lib/cmake/ZOL_Framework)
vcpkg_copy_tools(TOOL_NAMES zol-backend-check AUTO_CLEAN)
vcpkg_copy_pdbs()
file(REMOVE_RECURSE
    "${CURRENT_PACKAGES_DIR}/debug/include"
    "${CURRENT_PACKAGES_DIR}/debug/share")

file(INSTALL "${CMAKE_CURRENT_LIST_DIR}/usage" DESTINATION "${CURRENT_PACKAGES_DIR}/share/${PORT}")
# The project has no licence file yet.
set(VCPKG_POLICY_SKIP_COPYRIGHT_CHECK enabled)
