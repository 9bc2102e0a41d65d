# Programs, shared libraries and plug-ins share one directory, because Windows searches libraries beside the program.
set(CONTROLLER_PROGRAM_DIRECTORY "${PROJECT_BINARY_DIR}/bin")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CONTROLLER_PROGRAM_DIRECTORY}")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CONTROLLER_PROGRAM_DIRECTORY}")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  set(CONTROLLER_RUN_TIME_LIBRARIES libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  foreach(library IN LISTS CONTROLLER_RUN_TIME_LIBRARIES)
    execute_process(COMMAND "${CMAKE_CXX_COMPILER}" "-print-file-name=${library}"
      OUTPUT_VARIABLE library_path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    file(COPY "${library_path}" DESTINATION "${CONTROLLER_PROGRAM_DIRECTORY}")
  endforeach()
endif()
