# The compiler's results are kept across clones: paths below the project's parent folder count as relative ones, and
# the folder of a build does not count. What precompiled headers need is told, too.
find_program(CCACHE ccache)
if(CCACHE)
  cmake_path(GET CMAKE_SOURCE_DIR PARENT_PATH ccache_base)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1
      CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${CCACHE})
endif()
