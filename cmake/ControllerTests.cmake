# Tests are most of a fresh build. They are not optimised, have little debug information, and share a precompiled GoogleTest
# header; -fpch-preprocess is for ccache.
set(controller_test_options -O0 -g1 -fpch-preprocess)
function(controller_compile_as_test target)
  target_compile_options(${target} PRIVATE ${controller_test_options})
  target_precompile_headers(${target} REUSE_FROM controller_test_headers)
endfunction()

# Sources shared by tests.
set(CONTROLLER_TEST_KIT "${PROJECT_SOURCE_DIR}/tests/kit")

# Builds the programs of all unit tests.
if(CONTROLLER_BUILD_TESTS)
  add_custom_target(unit_tests)
endif()

# controller_add_tests(NAME [KIND unit|process|system] SOURCES FooTest.cpp ... [SUPPORT helper.cpp ...]
#                      [LIBRARIES target ...] [DEFINITIONS name=value ...] [DEPENDS target ...]
#                      [PROCESS_PER_TEST] [ONE_THREAD])
#
# Builds a test program. A further call with the same NAME, from any directory, adds files to it. All calls
# for a program list the same LIBRARIES, because their order decides which of two definitions is linked. DEPENDS lists what the
# program starts or loads. ONE_THREAD excludes single-threaded tests, which have no races, from the thread sanitizer build.
# Without CONTROLLER_BUILD_TESTS a call has no effect.
#
# KIND is the label of the tests: unit (default: one process, no program of the product), process (one part of the
# product with the processes it starts) or system (host, runner and front ends as installed). Each test file has one
# ctest entry: FooTest.cpp holds the suites FooTest and "FooTest_...". A file with other suites fails, because its entry
# runs no test. With PROCESS_PER_TEST each TEST() has its own entry and process, for effects that occur once per process.
function(controller_add_tests name)
  cmake_parse_arguments(PARSE_ARGV 1 tests "PROCESS_PER_TEST;ONE_THREAD" "KIND" "SOURCES;SUPPORT;LIBRARIES;DEFINITIONS;DEPENDS")
  if(NOT CONTROLLER_BUILD_TESTS OR (tests_ONE_THREAD AND CONTROLLER_SANITIZERS MATCHES "thread"))
    return()
  endif()
  if(NOT tests_KIND)
    set(tests_KIND unit)
  endif()
  if(NOT TARGET ${name})
    add_executable(${name})
    controller_compile_as_test(${name})
    target_link_libraries(${name} PRIVATE controller_flags controller_test_main)
  endif()
  target_sources(${name} PRIVATE ${tests_SOURCES} ${tests_SUPPORT})
  target_link_libraries(${name} PRIVATE ${tests_LIBRARIES})
  target_compile_definitions(${name} PRIVATE ${tests_DEFINITIONS})
  if(tests_DEPENDS)
    add_dependencies(${name} ${tests_DEPENDS})
  endif()
  if(tests_KIND STREQUAL "unit")
    add_dependencies(unit_tests ${name})
  endif()
  foreach(source IN LISTS tests_SOURCES)
    get_filename_component(suite "${source}" NAME_WE)
    if(tests_PROCESS_PER_TEST)
      file(STRINGS "${source}" headings REGEX "^TEST(_F)?\\(")
      set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
      foreach(heading IN LISTS headings)
        string(REGEX REPLACE "^TEST(_F)?\\(([A-Za-z0-9_]+), *([A-Za-z0-9_]+)\\).*" "\\2.\\3" test "${heading}")
        add_test(NAME ${name}.${test} COMMAND ${name} --gtest_filter=${test})
        set_property(TEST ${name}.${test} PROPERTY LABELS "${tests_KIND};${name}")
      endforeach()
    else()
      add_test(NAME ${name}.${suite} COMMAND ${name} --gtest_filter=${suite}.*:${suite}_*:*/${suite}.*:*/${suite}_*)
      set_property(TEST ${name}.${suite} PROPERTY LABELS "${tests_KIND};${name}")
    endif()
    get_filename_component(source_path "${source}" ABSOLUTE)
    set_property(GLOBAL APPEND PROPERTY controller_registered_test_files "${source_path}")
  endforeach()
endfunction()
