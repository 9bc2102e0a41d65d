# The standard headers that most sources of the product include, compiled once for all of them. A source still includes
# what it uses: clang-tidy and the headers' own test compile without this.
# Not for Windows: under a precompiled header GCC 12 no longer sees that the inline functions of mingw's wchar.h are the
# system's, and warns of its own guesses there. Nor with clang, which only the fuzzers use: it refuses a precompiled header
# to a target with other definitions.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
  set(CONTROLLER_PRECOMPILE ON)
  add_library(controller_standard_headers OBJECT "${PROJECT_SOURCE_DIR}/src/StandardHeaders.cpp")
  target_link_libraries(controller_standard_headers PRIVATE controller_flags)
  # For ccache.
  target_compile_options(controller_standard_headers PRIVATE -fpch-preprocess)
  target_precompile_headers(controller_standard_headers PRIVATE
    <algorithm> <array> <atomic> <chrono> <condition_variable> <cstdint> <filesystem> <functional> <map> <memory> <mutex>
    <optional> <set> <string> <string_view> <thread> <tuple> <utility> <vector>)
endif()

function(controller_precompile_headers target)
  if(CONTROLLER_PRECOMPILE)
    target_compile_options(${target} PRIVATE -fpch-preprocess)
    target_precompile_headers(${target} REUSE_FROM controller_standard_headers)
  endif()
endfunction()
