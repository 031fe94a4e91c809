# SPDX-License-Identifier: GPL-3.0-or-later
find_program(QUELTO_WAYLAND_SCANNER wayland-scanner REQUIRED)

# quelto_wayland_protocol(name file.xml): a library with the client code of a Wayland protocol, and its header
# NAME-client-protocol.h, where NAME is the file's.
# The code is generated during the configuration, because clang-tidy runs without a build.
function(quelto_wayland_protocol name xml)
    cmake_path(ABSOLUTE_PATH xml BASE_DIRECTORY ${CMAKE_CURRENT_SOURCE_DIR})
    cmake_path(GET xml STEM protocol)
    set(folder ${CMAKE_BINARY_DIR}/protocols)
    set(header ${folder}/${protocol}-client-protocol.h)
    set(code ${folder}/${protocol}-protocol.c)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${xml})
    file(MAKE_DIRECTORY ${folder})
    if(${xml} IS_NEWER_THAN ${header} OR ${xml} IS_NEWER_THAN ${code})
        execute_process(
            COMMAND ${QUELTO_WAYLAND_SCANNER} client-header ${xml} ${header} COMMAND_ERROR_IS_FATAL ANY
        )
        execute_process(COMMAND ${QUELTO_WAYLAND_SCANNER} private-code ${xml} ${code} COMMAND_ERROR_IS_FATAL ANY)
    endif()
    add_library(${name} STATIC ${code})
    target_include_directories(${name} SYSTEM PUBLIC ${folder})
    target_link_libraries(${name} PUBLIC PkgConfig::WAYLAND)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF UNITY_BUILD OFF)
endfunction()
