# The plug-in as the host loads it: one shared library, with the folders res/ and presets/ beside it.

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
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/cmake/cquenza.def)
  else()
    set(map ${PROJECT_SOURCE_DIR}/cmake/cquenza.map)
    target_link_options(${name} PRIVATE LINKER:--version-script=${map} LINKER:--no-undefined)
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${map})
  endif()
  foreach(folder res presets)
    quenza_plugin_folder(${name}_${folder} ${folder})
    add_dependencies(${name} ${name}_${folder})
  endforeach()
endfunction()

# The whole folder is copied again when one of its files changes, comes or goes.
function(quenza_plugin_folder name folder)
  set(from ${PROJECT_SOURCE_DIR}/${folder})
  set(to ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${folder})
  set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${name}.stamp)
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${name}.list)
  file(GLOB_RECURSE files CONFIGURE_DEPENDS ${from}/*)
  string(REPLACE ";" "\n" lines "${files}")
  file(CONFIGURE OUTPUT ${list} CONTENT "${lines}\n" @ONLY)
  add_custom_command(
    OUTPUT ${stamp}
    COMMAND ${CMAKE_COMMAND} -E rm -rf ${to}
    COMMAND ${CMAKE_COMMAND} -E copy_directory ${from} ${to}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${files} ${list}
    COMMENT "Copying the plug-in's folder ${folder}"
    VERBATIM)
  add_custom_target(${name} ALL DEPENDS ${stamp})
endfunction()
