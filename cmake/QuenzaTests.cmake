# How a folder of tests becomes a program, and what its tests run under.

# The tests' own code isn't bound by the processor: it compiles in half the time this way.
if(CMAKE_BUILD_TYPE STREQUAL "Debug")
  set(QUENZA_TEST_OPTIONS "")
elseif(QUENZA_SANITIZE)
  set(QUENZA_TEST_OPTIONS -O0)
else()
  set(QUENZA_TEST_OPTIONS -O1)
endif()

# The options that make a finding fail a test. Without intercept_tls_get_addr=0 the leak checker of GCC 12 takes a library's
# thread-local memory for a block of an old C library wherever the heap puts it 16 bytes into a page. It then reads the
# block's place out of the bytes before it, and a passed test ends with "Tracer caught signal 11". The checker finds that
# memory without this, too.
set(QUENZA_TEST_ENVIRONMENT
    "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1:detect_stack_use_after_return=1:halt_on_error=1:intercept_tls_get_addr=0"
    "TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1:suppressions=${PROJECT_SOURCE_DIR}/cmake/tsan.supp"
    "UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1"
    "LSAN_OPTIONS=print_suppressions=0:suppressions=${PROJECT_SOURCE_DIR}/cmake/leaks.supp")

# quenza_tests(FOLDER [DEPENDS target...] [RUNS target...] [ASSIMP regex...]): one GoogleTest program of tests/FOLDER, which
# links DEPENDS and needs RUNS built beside it. Without sources, or without a target that it links, it is left out. Files
# whose names match a regex of ASSIMP are left out where there is no Assimp, to import models or to compare with.
function(quenza_tests folder)
  cmake_parse_arguments(ARG "" "" "DEPENDS;RUNS;ASSIMP" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
  foreach(pattern IN LISTS ARG_ASSIMP)
    if(NOT QUENZA_HAS_ASSIMP)
      list(FILTER sources EXCLUDE REGEX "/${pattern}\\.cpp$")
    endif()
  endforeach()
  if(ARG_ASSIMP AND QUENZA_HAS_ASSIMP)
    list(APPEND ARG_DEPENDS assimp::assimp)
  endif()
  set(compiled ${sources})
  list(FILTER compiled INCLUDE REGEX "\\.cpp$")
  if(NOT compiled)
    return()
  endif()
  foreach(dependency IN LISTS ARG_DEPENDS)
    if(NOT TARGET ${dependency})
      message(STATUS "tests/${folder} is left out: there is no target ${dependency}")
      return()
    endif()
  endforeach()
  set(name test_${folder})
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE quenza_options ${ARG_DEPENDS} GTest::gtest_main)
  target_compile_definitions(
    ${name} PRIVATE QUENZA_SOURCE_DIR="${PROJECT_SOURCE_DIR}" QUENZA_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
                    QUENZA_RENDERER_DIR="${PROJECT_BINARY_DIR}/renderer")
  target_compile_options(${name} PRIVATE ${QUENZA_TEST_OPTIONS})
  quenza_unity(${name})
  # It takes a test's own file, which is included in another there, for a header.
  target_compile_options(${name} PRIVATE $<$<AND:$<CXX_COMPILER_ID:GNU>,$<BOOL:${CMAKE_UNITY_BUILD}>>:-Wno-subobject-linkage>)
  foreach(program IN LISTS ARG_RUNS)
    if(TARGET ${program})
      add_dependencies(${name} ${program})
    endif()
  endforeach()
  if(QUENZA_SANITIZE)
    quenza_add_test_runs(${folder} ${compiled})
  else()
    gtest_discover_tests(${name} TEST_PREFIX "${folder}." NO_PRETTY_VALUES DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
  endif()
endfunction()

# quenza_add_test_runs(FOLDER SOURCE...): the tests of a folder in as few processes as keep two processors busy, as a
# sanitizer's start takes longer than most tests. Slow ones are left out. What each run counted lies in test-results.
function(quenza_add_test_runs folder)
  list(LENGTH ARGN size)
  math(EXPR runs "${size} / 20 + 1")
  math(EXPR last "${runs} - 1")
  foreach(run RANGE ${last})
    add_test(NAME ${folder}.${run}
             COMMAND ${CMAKE_COMMAND} -E env GTEST_TOTAL_SHARDS=${runs} GTEST_SHARD_INDEX=${run} $<TARGET_FILE:test_${folder}>
                     --gtest_brief=1 --gtest_filter=-*Slow* --gtest_output=xml:${PROJECT_BINARY_DIR}/test-results/${folder}.${run}.xml)
    # The longest first.
    set_tests_properties(${folder}.${run} PROPERTIES TIMEOUT 900 COST ${size} ENVIRONMENT "${QUENZA_TEST_ENVIRONMENT}")
  endforeach()
endfunction()
