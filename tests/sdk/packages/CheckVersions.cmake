# The manifests that carry the version once more carry the project's.
#
# cmake -DVERSION=... -DMANIFESTS=<file>;... -P CheckVersions.cmake

cmake_minimum_required(VERSION 3.25)

foreach(file IN LISTS MANIFESTS)
    file(READ ${file} manifest)
    string(JSON version GET "${manifest}" version)
    if(NOT version STREQUAL VERSION)
        message(FATAL_ERROR "${file} is of version ${version}, the project of ${VERSION}")
    endif()
endforeach()
