# 64-bit Windows programs from Debian's cross compiler, with nothing beside them but the system's own libraries.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(triple x86_64-w64-mingw32)
# The variant whose std::thread and std::mutex work.
set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)

# Libraries come from the compiler's folder and from those that scripts/setup-windows builds, never from this system's.
get_filename_component(QUENZA_WINDOWS_FOLDER ${CMAKE_CURRENT_LIST_DIR}/../../build-windows ABSOLUTE)
set(CMAKE_FIND_ROOT_PATH ${QUENZA_WINDOWS_FOLDER}/libraries /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The system's functions of Windows 10, and printf as the standard wants it.
add_compile_definitions(_WIN32_WINNT=0x0A00 __USE_MINGW_ANSI_STDIO=1)
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT -static)
endforeach()

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../../scripts/run-windows)
