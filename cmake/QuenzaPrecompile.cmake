# Precompiled standard headers. Off in the default preset, which so proves that each file includes what it uses; on for
# the sanitizers, whose build they shorten by a quarter.

option(QUENZA_PRECOMPILE "Precompile the headers of the standard library and of GoogleTest" OFF)

set(QUENZA_PRECOMPILED
    <algorithm>
    <array>
    <cmath>
    <cstdint>
    <cstring>
    <functional>
    <map>
    <memory>
    <optional>
    <stdexcept>
    <string>
    <string_view>
    <unordered_map>
    <utility>
    <vector>)

# The headers are compiled once for all libraries, and once for all tests.
function(quenza_precompiled_headers name)
  set(source ${PROJECT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "// Carries the precompiled headers.\n")
  add_library(${name} OBJECT ${source})
  target_link_libraries(${name} PRIVATE quenza_options)
  target_precompile_headers(${name} PRIVATE ${QUENZA_PRECOMPILED} ${ARGN})
endfunction()

# quenza_precompile(TARGET [TESTS]): a library, or a test program.
function(quenza_precompile target)
  if(NOT QUENZA_PRECOMPILE)
    return()
  endif()
  if(ARGN STREQUAL TESTS)
    set(carrier quenza_precompiled_tests)
  else()
    set(carrier quenza_precompiled)
  endif()
  if(NOT TARGET ${carrier})
    if(carrier STREQUAL quenza_precompiled_tests)
      quenza_precompiled_headers(${carrier} <gtest/gtest.h>)
      # As test programs are compiled: the compiler takes the headers only under the flags that it made them under.
      target_compile_options(${carrier} PRIVATE $<$<NOT:$<BOOL:${WIN32}>>:-fPIE> ${QUENZA_TEST_OPTIONS})
      target_link_libraries(${carrier} PRIVATE GTest::gtest_main)
    else()
      quenza_precompiled_headers(${carrier})
    endif()
  endif()
  target_precompile_headers(${target} REUSE_FROM ${carrier})
endfunction()
