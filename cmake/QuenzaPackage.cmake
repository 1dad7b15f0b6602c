# What a package holds, the same folders on every system: cmake --install BUILD --prefix FOLDER, after the target "packed".
# scripts/package calls both.

set(packed cquenza quenza-headless quenza-scene)
install(TARGETS cquenza DESTINATION quenza)
install(DIRECTORY res presets DESTINATION quenza)
install(TARGETS quenza-headless quenza-scene DESTINATION headless)
# Program and library together as the renderer's own installer leaves them, and away from the plug-in, which takes a
# library beside it for the one to use.
if(TARGET quenza_renderer)
  set(stand_in quenza_renderer quenza_renderer_console quenza_sdk)
  list(APPEND packed ${stand_in})
  install(TARGETS ${stand_in} DESTINATION stand-in-renderer)
endif()
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE DESTINATION .)
install(DIRECTORY docs DESTINATION .)
# The one left out shows a model of a Debian package.
install(
  DIRECTORY examples
  DESTINATION .
  PATTERN real-model.json EXCLUDE)
add_custom_target(packed DEPENDS ${packed})
