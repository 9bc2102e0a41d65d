# Precompiles the standard headers that most sources include. Sources still include what they use: clang-tidy and the header tests
# compile without this. Not for Windows: with a precompiled header GCC 12 warns about inline functions in mingw's wchar.h. Not
# with clang (fuzzers only): it rejects a precompiled header for targets with other definitions.
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
