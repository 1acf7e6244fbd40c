# The version in the manifests is the project's.
#
# cmake -DVERSION=... -DMANIFESTS=<file>;... -P CheckVersions.cmake

cmake_minimum_required(VERSION 3.25)

foreach(file IN LISTS MANIFESTS)
    file(READ ${file} manifest)
    string(JSON version GET "${manifest}" version)
    if(NOT version STREQUAL VERSION)
        message(FATAL_ERROR "${file} has version ${version}, the project has ${VERSION}")
    endif()
endforeach()
