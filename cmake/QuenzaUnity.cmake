# Several sources of a target are compiled as one, as most of a source's time goes into the headers that it shares with the
# others: a build takes a third of the time. The preset "debug" compiles each alone, and so proves that each includes what
# it uses.

# quenza_unity(TARGET): leaves out the sources that take names of the scene library into the global namespace, where names
# of the host or of the engine are the same, those that give a namespace another name, and those that bring in the macros of
# Windows.
function(quenza_unity target)
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    get_filename_component(path ${source} ABSOLUTE)
    if(source MATCHES "\\.cpp$" AND EXISTS ${path})
      file(STRINGS ${path} found LIMIT_COUNT 1 REGEX "^( *#include <windows|using namespace Quenza;|using Quenza::(String|Vector);|namespace (Binding|Interface) =)")
      if(found)
        set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
      endif()
    endif()
  endforeach()
endfunction()
