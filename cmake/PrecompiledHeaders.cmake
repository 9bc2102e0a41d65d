# The standard headers that most sources of the product include, compiled once for all of them. A source still includes
# what it uses: clang-tidy and the headers' own test compile without this.
# clang, which only the fuzzers use, refuses a precompiled header to a target with other definitions.
function(controller_precompile_headers target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # -fpch-preprocess is for ccache.
    target_compile_options(${target} PRIVATE -fpch-preprocess)
    if(WIN32)
      # GCC 12 no longer sees that the inline functions of mingw's wchar.h are the system's, and warns of its own guesses.
      target_compile_options(${target} PRIVATE -Wno-array-bounds)
    endif()
    target_precompile_headers(${target} REUSE_FROM controller_standard_headers)
  endif()
endfunction()
