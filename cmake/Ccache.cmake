# SPDX-License-Identifier: GPL-3.0-or-later
# Uses ccache if it is installed. CCACHE_SLOPPINESS lets it cache precompiled headers, and CCACHE_BASEDIR lets clones in
# different folders share results.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
    set(CMAKE_CXX_COMPILER_LAUNCHER
        "${CMAKE_COMMAND};-E;env;CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime;CCACHE_BASEDIR=${CMAKE_SOURCE_DIR};CCACHE_NOHASHDIR=1;${CCACHE_PROGRAM}"
    )
endif()
