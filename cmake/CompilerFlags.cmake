# Two INTERFACE targets: `controller_headers` holds what users of a target need and is passed on;
# `controller_flags` holds the flags of the project's own sources and is always linked PRIVATE.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

option(CONTROLLER_WARNINGS_AS_ERRORS "Warnings in our sources end the build (on in the presets)" OFF)

add_library(controller_headers INTERFACE)
target_include_directories(controller_headers INTERFACE "${PROJECT_SOURCE_DIR}/include" "${PROJECT_SOURCE_DIR}/src")
if(CMAKE_SYSTEM_NAME STREQUAL "Windows")
  target_compile_definitions(controller_headers INTERFACE
    UNICODE _UNICODE WIN32_LEAN_AND_MEAN NOMINMAX _WIN32_WINNT=0x0A00 WINVER=0x0A00)
endif()

add_library(controller_flags INTERFACE)
target_link_libraries(controller_flags INTERFACE controller_headers)
target_compile_options(controller_flags INTERFACE
  -Wall -Wextra -Wpedantic $<$<BOOL:${CONTROLLER_WARNINGS_AS_ERRORS}>:-Werror>
  -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor -Woverloaded-virtual
  -Wcast-align -Wcast-qual -Wnull-dereference -Wformat=2 -Wimplicit-fallthrough -Wextra-semi -Wundef -Wunused)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(controller_flags INTERFACE -Wduplicated-cond -Wduplicated-branches -Wlogical-op -Wuseless-cast)
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  find_package(Threads REQUIRED)
  target_link_libraries(controller_flags INTERFACE Threads::Threads)
  target_link_options(controller_flags INTERFACE -Wl,--no-undefined -Wl,-z,relro,-z,now)
endif()

# The link options of a program without shared libraries. On Linux it is position-independent like all others. The linker would warn of
# functions that may load libraries: LoadModule, which such a program does not call, and getpwuid_r, which finds the home directory
# of an account without HOME and loads only name services beyond /etc/passwd.
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  set(controller_static_program -static-pie -Wl,--no-warnings)
else()
  set(controller_static_program -static)
endif()

# Links a program that is started for each job: without shared libraries, where CONTROLLER_STATIC_RUNNER allows it.
function(controller_link_runner program)
  if(CONTROLLER_STATIC_RUNNER)
    target_link_libraries(${program} PRIVATE companion_archive)
    target_link_options(${program} PRIVATE ${controller_static_program})
  else()
    target_link_libraries(${program} PRIVATE ControllerCSWrapper)
  endif()
endfunction()

if(CONTROLLER_SANITIZERS)
  # Their run time must be shared.
  set(CONTROLLER_STATIC_RUNNER OFF)
  # For the whole build: GoogleTest and the project must agree, and a sanitizer in a shared library needs its run time in the
  # program.
  add_compile_options(-fsanitize=${CONTROLLER_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${CONTROLLER_SANITIZERS})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options(-fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizer-ignorelist.txt)
  endif()
endif()
