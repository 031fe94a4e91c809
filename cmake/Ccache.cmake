# SPDX-License-Identifier: GPL-3.0-or-later
# A compiler cache where there is one. ccache needs these liberties to serve precompiled headers.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND};-E;env;CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime;${CCACHE_PROGRAM}"
    )
endif()
