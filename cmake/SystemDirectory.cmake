# The directory of the twin files (windows/x.cpp, posix/x.cpp) that this build compiles.
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  set(CONTROLLER_SYSTEM windows)
else()
  set(CONTROLLER_SYSTEM posix)
endif()
