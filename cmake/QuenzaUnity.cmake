# Several sources of a target are compiled as one, as most of a source's time goes into the headers that it shares with the
# others: a build takes a third of the time. The preset "debug" compiles each alone, and so proves that each includes what
# it uses.

# How many at most: enough that the headers count for little, and few enough that two processors share a target's work.
set(QUENZA_UNITY_SIZE 20)

# quenza_unity(TARGET): puts its sources into groups. Those that take the whole scene library into the global namespace are
# together, as names of the engine are the same; beside the headers of the plug-in, whose names are the same too, each
# stays alone, as do those that take names one by one, that give a namespace another name, or that bring in the macros of
# Windows.
function(quenza_unity target)
  get_target_property(sources ${target} SOURCES)
  set(alone "^( *#include <windows|using Quenza::(String|Vector);|namespace (Binding|Interface) =)")
  if(CMAKE_CURRENT_SOURCE_DIR MATCHES "/src/")
    string(REPLACE "|namespace" "|using namespace Quenza;|namespace" alone "${alone}")
  endif()
  set(plain 0)
  set(using 0)
  foreach(source IN LISTS sources)
    get_filename_component(path ${source} ABSOLUTE)
    if(NOT source MATCHES "\\.cpp$" OR NOT EXISTS ${path})
      continue()
    endif()
    file(STRINGS ${path} found LIMIT_COUNT 1 REGEX "${alone}")
    if(found)
      continue()
    endif()
    file(STRINGS ${path} found LIMIT_COUNT 1 REGEX "^using namespace Quenza;")
    if(found)
      set(kind using)
    else()
      set(kind plain)
    endif()
    math(EXPR group "${${kind}} / ${QUENZA_UNITY_SIZE}")
    math(EXPR ${kind} "${${kind}} + 1")
    set_source_files_properties(${source} PROPERTIES UNITY_GROUP ${kind}_${group})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()
