# SPDX-License-Identifier: GPL-3.0-or-later
# Dependencies between folders point one way. The order of add_subdirectory in src/ is the order of the layers: a library
# may link, and its files may include, only what a folder listed before it defines.

# quelto_check_layers(name target …): stops the configuration if the library `name`, defined in the current folder, links
# or includes something from a folder that comes later.
function(quelto_check_layers name)
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${CMAKE_SOURCE_DIR}/src OUTPUT_VARIABLE folder)
    if(folder MATCHES "^\\.\\.")
        return()
    endif()
    foreach(target IN LISTS ARGN)
        if(target MATCHES "^quelto_" AND NOT TARGET ${target})
            message(FATAL_ERROR "${name} links ${target}, which no folder below src/${folder} defines.")
        endif()
    endforeach()
    set_property(GLOBAL APPEND PROPERTY QUELTO_FOLDERS ${folder})
    get_property(below GLOBAL PROPERTY QUELTO_FOLDERS)
    file(GLOB files ${CMAKE_CURRENT_SOURCE_DIR}/*.h ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    foreach(file IN LISTS files)
        file(STRINGS ${file} includes REGEX "^#include \"[a-z0-9_/]+/[A-Za-z0-9_]+\\.h\"")
        foreach(line IN LISTS includes)
            string(REGEX REPLACE "^#include \"(.*)/[^/]*\".*" "\\1" included "${line}")
            if(NOT included IN_LIST below)
                message(FATAL_ERROR "${file} includes src/${included}, which is above src/${folder}.")
            endif()
        endforeach()
    endforeach()
endfunction()
