# Built from Debian's sources with the build's own compiler and flags, for both systems.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
set(gtest_hide_internal_symbols ON CACHE BOOL "" FORCE)
if(NOT EXISTS /usr/src/googletest/CMakeLists.txt)
  message(FATAL_ERROR "/usr/src/googletest is missing. './run' installs what is needed, or: apt-get install googletest")
endif()
add_subdirectory(/usr/src/googletest "${PROJECT_BINARY_DIR}/third_party/googletest" EXCLUDE_FROM_ALL)
