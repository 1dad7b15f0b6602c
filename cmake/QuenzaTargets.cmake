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
            -ffp-contract=off
            # GCC 12 sees impossible lengths in inlined string code, also in its own std::string; AddressSanitizer judges better.
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
            $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds>
            $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>)
if(QUENZA_SANITIZE STREQUAL "thread")
  set(sanitizers thread)
elseif(QUENZA_SANITIZE)
  set(sanitizers address,undefined)
endif()
if(QUENZA_SANITIZE)
  target_compile_options(quenza_options INTERFACE -fsanitize=${sanitizers} -fno-sanitize-recover=undefined
                                                  -fno-omit-frame-pointer)
  target_link_options(quenza_options INTERFACE -fsanitize=${sanitizers})
  target_compile_definitions(quenza_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()

if(QUENZA_FUZZ)
  target_compile_options(quenza_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# quenza_library(NAME [DEPENDS target...]): a static library of all sources below the current folder.
# Folder and target go together: what a folder may include is what its target links.
# A folder without a .cpp file becomes an interface library, which passes its dependencies on.
function(quenza_library name)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS *.cpp *.h)
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
  if(compiled)
    quenza_unity(${name})
  endif()
endfunction()
