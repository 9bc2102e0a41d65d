# ccache, where the machine has it, makes a second build of the same sources nearly free.
find_program(CONTROLLER_CCACHE ccache)
if(CONTROLLER_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${CONTROLLER_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CONTROLLER_CCACHE}")
endif()
