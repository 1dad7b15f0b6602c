# How every target of the project is compiled, and how a folder becomes a library.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_library(quenza_options INTERFACE)
target_compile_options(
  quenza_options
  INTERFACE -Wall
            -Wextra
            -Wshadow
            -Wconversion
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Werror
            # Fused multiply-add changes normals, and with them the checksums that name mesh files.
            -ffp-contract=off)
if(QUENZA_SANITIZE)
  target_compile_options(quenza_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
                                                  -fno-omit-frame-pointer)
  target_link_options(quenza_options INTERFACE -fsanitize=address,undefined)
  target_compile_definitions(quenza_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()

# quenza_library(NAME [DEPENDS target...]): a static library of all sources below the current folder.
# Folder and target go together: what a folder may include is what its target links.
# A folder without a .cpp file becomes an interface library, which passes its dependencies on.
function(quenza_library name)
  cmake_parse_arguments(ARG "" "" "DEPENDS;EXCLUDE" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h)
  foreach(excluded IN LISTS ARG_EXCLUDE)
    list(REMOVE_ITEM sources ${CMAKE_CURRENT_SOURCE_DIR}/${excluded})
  endforeach()
  set(compiled ${sources})
  list(FILTER compiled INCLUDE REGEX "\\.cpp$")
  if(compiled)
    add_library(${name} STATIC ${sources})
    set(scope PUBLIC)
  else()
    add_library(${name} INTERFACE)
    set(scope INTERFACE)
  endif()
  target_include_directories(${name} ${scope} ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} ${scope} quenza_options ${ARG_DEPENDS})
endfunction()

# quenza_tests(FOLDER [DEPENDS target...]): one GoogleTest program of tests/FOLDER.
# Tests with "Slow" in their name carry the label "slow"; scripts/test leaves them out of the sanitizer run.
function(quenza_tests folder)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS ${folder}/*.cpp ${folder}/*.h)
  if(NOT sources)
    return()
  endif()
  foreach(dependency IN LISTS ARG_DEPENDS)
    if(NOT TARGET ${dependency})
      message(STATUS "tests/${folder} is left out: there is no target ${dependency}")
      return()
    endif()
  endforeach()
  add_executable(test_${folder} ${sources})
  target_include_directories(test_${folder} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/src
                                                    ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(test_${folder} PRIVATE quenza_options ${ARG_DEPENDS} GTest::gtest_main)
  target_compile_definitions(
    test_${folder} PRIVATE QUENZA_SOURCE_DIR="${PROJECT_SOURCE_DIR}" QUENZA_BIN_DIR="${CMAKE_RUNTIME_OUTPUT_DIRECTORY}"
                           QUENZA_RENDERER_DIR="${PROJECT_BINARY_DIR}/renderer")
  gtest_discover_tests(test_${folder} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300)
endfunction()
