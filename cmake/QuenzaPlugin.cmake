# The plug-in as the host loads it: one shared library, with the folder res/ beside it.

# quenza_plugin_module(NAME FROM library [DEPENDS target...]): all objects of the static library, not only those that
# c4d_main refers to, as a module that exports c4d_main alone.
function(quenza_plugin_module name)
  cmake_parse_arguments(ARG "" "FROM" "DEPENDS" ${ARGN})
  add_library(${name} MODULE $<TARGET_OBJECTS:${ARG_FROM}>)
  target_link_libraries(${name} PRIVATE quenza_options ${ARG_DEPENDS})
  set_target_properties(
    ${name}
    PROPERTIES PREFIX ""
               LINKER_LANGUAGE CXX
               LIBRARY_OUTPUT_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  if(WIN32)
    set_target_properties(${name} PROPERTIES SUFFIX ".cdl64")
  else()
    set(map ${PROJECT_SOURCE_DIR}/cmake/cquenza.map)
    target_link_options(${name} PRIVATE LINKER:--version-script=${map} LINKER:--no-undefined)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${map})
  endif()
  quenza_plugin_resources(${name}_resources)
  add_dependencies(${name} ${name}_resources)
endfunction()

# The whole folder is copied again when one of its files changes, comes or goes.
function(quenza_plugin_resources name)
  set(from ${PROJECT_SOURCE_DIR}/res)
  set(to ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/res)
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${name}.stamp)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${name}.list)
  file(GLOB_RECURSE resources CONFIGURE_DEPENDS ${from}/*)
  string(REPLACE ";" "\n" lines "${resources}")
  file(CONFIGURE OUTPUT ${list} CONTENT "${lines}\n" @ONLY)
  add_custom_command(
    OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${to}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${from} ${to}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${resources} ${list}
    COMMENT "Copying the plug-in's resources"
    VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${stamp})
endfunction()
