# ccache, if installed, makes repeated builds of the same sources cheap, in any directory.
find_program(CONTROLLER_CCACHE ccache)
if(CONTROLLER_CCACHE)
  set(launcher "${CMAKE_COMMAND}" -E env "CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}" CCACHE_NOHASHDIR=1
    CCACHE_SLOPPINESS=pch_defines,time_macros "${CONTROLLER_CCACHE}")
  set(CMAKE_C_COMPILER_LAUNCHER "${launcher}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${launcher}")
endif()
