# Read by cpack before it makes packages from the installed groups of components. Gives each Debian
# package its copyright file and its changelog, and moves the debug information to where debuggers look
# for that of installed packages.

if(NOT CPACK_GENERATOR STREQUAL "DEB")
    return()
endif()

set(source ${CMAKE_CURRENT_LIST_DIR}/..)
set(staging ${CPACK_TEMPORARY_DIRECTORY})

# The packages of Debian whose code is compiled in. The licences ask for their notices in each copy.
file(READ ${source}/packaging/debian/copyright copyright)
foreach(library IN ITEMS libspdlog-dev libfmt-dev libutfcpp-dev libcli11-dev nlohmann-json3-dev)
    file(READ /usr/share/doc/${library}/copyright notices)
    string(APPEND copyright "\n\n${library}\n\n${notices}")
endforeach()

# The section of this version, in the format of Debian's changelogs.
file(READ ${source}/CHANGELOG.md changes)
string(FIND "${changes}" "\n## ${CPACK_PACKAGE_VERSION}" begin)
if(begin EQUAL -1)
    message(FATAL_ERROR "CHANGELOG.md has no section for ${CPACK_PACKAGE_VERSION}")
endif()
string(SUBSTRING "${changes}" ${begin} -1 changes)
string(REGEX REPLACE "^\n##[^\n]*\n+" "\n" changes "${changes}")
string(FIND "${changes}" "\n## " end)
string(SUBSTRING "${changes}" 0 ${end} changes)
string(STRIP "${changes}" changes)
string(REPLACE "\n  " "\n    " changes "\n${changes}")
string(REPLACE "\n- " "\n  * " changes "${changes}")
file(WRITE ${staging}/changes "${changes}\n")
execute_process(COMMAND fmt --tagged-paragraph --width=79 ${staging}/changes
    OUTPUT_VARIABLE changes COMMAND_ERROR_IS_FATAL ANY)
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(changelog "${CPACK_DEBIAN_PACKAGE_SOURCE} (${CPACK_PACKAGE_VERSION}) UNRELEASED; urgency=medium\n")
string(APPEND changelog "${changes}\n -- ${CPACK_PACKAGE_CONTACT}  ${date}\n")

foreach(group IN ITEMS SDK DEVELOPMENT DEBUG)
    string(TOLOWER ${group} folder)
    set(documents ${staging}/${folder}/usr/share/doc/${CPACK_DEBIAN_${group}_PACKAGE_NAME})
    file(WRITE ${documents}/copyright "${copyright}")
    file(WRITE ${documents}/changelog "${changelog}")
    execute_process(COMMAND gzip -9n ${documents}/changelog COMMAND_ERROR_IS_FATAL ANY)
endforeach()

# Debuggers find the information by the build ID, and load the printers of a library from there.
set(debug ${staging}/debug/usr)
file(GLOB_RECURSE debugFiles ${debug}/*.debug)
foreach(file IN LISTS debugFiles)
    execute_process(COMMAND readelf --notes ${file}
        OUTPUT_VARIABLE notes ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    if(NOT notes MATCHES "Build ID: ([0-9a-f][0-9a-f])([0-9a-f]+)")
        message(FATAL_ERROR "${file} has no build ID")
    endif()
    file(MAKE_DIRECTORY ${debug}/lib/debug/.build-id/${CMAKE_MATCH_1})
    file(RENAME ${file} ${debug}/lib/debug/.build-id/${CMAKE_MATCH_1}/${CMAKE_MATCH_2}.debug)
endforeach()
file(GLOB printers ${debug}/lib/*-gdb.py)
file(MAKE_DIRECTORY ${debug}/lib/debug/usr/lib)
file(COPY ${printers} DESTINATION ${debug}/lib/debug/usr/lib)
file(GLOB moved ${debug}/bin ${debug}/lib/*)
list(REMOVE_ITEM moved ${debug}/lib/debug)
file(REMOVE_RECURSE ${moved})
