# The standard headers that most sources of the product include, compiled once for all of them. A source still includes
# what it uses: clang-tidy and the headers' own test compile without this.
# clang, which only the fuzzers use, refuses a precompiled header to a target with other definitions.
function(controller_precompile_headers target)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # -fpch-preprocess is for ccache.
    target_compile_options(${target} PRIVATE -fpch-preprocess)
    target_precompile_headers(${target} REUSE_FROM controller_standard_headers)
  endif()
endfunction()
