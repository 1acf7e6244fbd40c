# Makes the packages of a build tree and unpacks the archives: <UNPACKED>/sdk is the SDK alone,
# <UNPACKED>/with-debug-files the SDK with its debug information unpacked over it.
#
# cmake -DCPACK=... -DBUILD=... -DCONFIG=... -DWORK=... -DUNPACKED=... -P MakeArchives.cmake

cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/../../support/Run.cmake)

file(REMOVE_RECURSE ${WORK})
run(${CPACK} -C ${CONFIG} --config ${BUILD}/CPackConfig.cmake -B ${WORK}/made)

# unpack(<folder> <archive>...): all must have the same top folder.
function(unpack folder)
    set(fresh "${UNPACKED}/fresh")
    foreach(archive IN LISTS ARGN)
        file(ARCHIVE_EXTRACT INPUT "${archive}" DESTINATION "${fresh}")
    endforeach()
    file(GLOB top RELATIVE "${fresh}" "${fresh}/*")
    if(NOT top MATCHES "^zol-framework-[0-9.]+-[a-z]+-x64(-msvc)?$")
        message(FATAL_ERROR "the archives unpack into '${top}'")
    endif()
    file(RENAME "${fresh}/${top}" "${UNPACKED}/${folder}")
    file(REMOVE_RECURSE "${fresh}")
endfunction()

file(GLOB sdk ${WORK}/made/*.zip ${WORK}/made/*.tar.gz)
set(debug ${sdk})
list(FILTER sdk EXCLUDE REGEX "-debug\\.(zip|tar\\.gz)$")
list(FILTER debug INCLUDE REGEX "-debug\\.(zip|tar\\.gz)$")
foreach(archives IN ITEMS "${sdk}" "${debug}")
    list(LENGTH archives count)
    if(NOT count EQUAL 1)
        message(FATAL_ERROR "expected one archive, found '${archives}'")
    endif()
endforeach()
unpack(sdk ${sdk})
unpack(with-debug-files ${sdk} ${debug})
