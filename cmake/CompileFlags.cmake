# The compile flags that every target of the project shares.

# The same inputs give the same bits in every build, so no compiler may fuse a multiplication with an
# addition, and 32-bit x86 computes in SSE registers instead of the 80-bit ones. Nothing looks at
# errno after a mathematical function.
set(KVGEOM_FP_CONTRACT off CACHE STRING "Anything but off breaks the promise; for showing that")
mark_as_advanced(KVGEOM_FP_CONTRACT)
add_library(kvgeom_numerics INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(kvgeom_numerics INTERFACE -ffp-contract=${KVGEOM_FP_CONTRACT} -fno-math-errno)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND CMAKE_SYSTEM_PROCESSOR MATCHES "86|AMD64")
    target_compile_options(kvgeom_numerics INTERFACE -msse2 -mfpmath=sse)
  endif()
endif()

# GCC 12 takes "literal" + string for an overlapping copy (its bug 105651).
add_library(kvgeom_warnings INTERFACE)
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  target_compile_options(
    kvgeom_warnings
    INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wold-style-cast -Wdouble-promotion
              $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
              $<$<BOOL:${KVGEOM_WERROR}>:-Werror>)
endif()

# What every target of the project is compiled as.
function(kvgeom_compile_as_ours target)
  target_compile_features(${target} PRIVATE cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:kvgeom_numerics>
                                          $<BUILD_INTERFACE:kvgeom_warnings>)
endfunction()
