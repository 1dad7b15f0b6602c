# Libraries that Debian ships; scripts/setup installs them.

set(QUENZA_SETUP_HINT "Run scripts/setup, which installs what the build needs.")

find_package(ZLIB)
find_package(double-conversion)
find_package(nlohmann_json)
find_package(assimp)
find_package(embree 3 CONFIG)
find_package(OpenEXR CONFIG)
find_package(PNG)
find_package(TIFF)
find_path(STB_INCLUDE_DIR stb/stb_image.h)
find_path(TINYXML_INCLUDE_DIR tinyxml.h)
find_library(TINYXML_LIBRARY tinyxml)
find_path(MINIZIP_INCLUDE_DIR minizip/zip.h)
find_library(MINIZIP_LIBRARY minizip)
# Its own configuration asks for programs of another package.
find_path(OPENIMAGEIO_INCLUDE_DIR OpenImageIO/imageio.h)
find_library(OPENIMAGEIO_LIBRARY OpenImageIO)
find_library(OPENIMAGEIO_UTIL_LIBRARY OpenImageIO_Util)
find_path(HTTPLIB_INCLUDE_DIR httplib.h)
find_library(HTTPLIB_LIBRARY cpp-httplib)
if(NOT (ZLIB_FOUND AND double-conversion_FOUND AND nlohmann_json_FOUND AND assimp_FOUND AND TINYXML_INCLUDE_DIR
        AND TINYXML_LIBRARY AND embree_FOUND AND OpenEXR_FOUND AND PNG_FOUND AND TIFF_FOUND
        AND STB_INCLUDE_DIR
        AND MINIZIP_INCLUDE_DIR AND MINIZIP_LIBRARY AND OPENIMAGEIO_INCLUDE_DIR AND OPENIMAGEIO_LIBRARY
        AND OPENIMAGEIO_UTIL_LIBRARY AND HTTPLIB_INCLUDE_DIR AND HTTPLIB_LIBRARY))
  message(FATAL_ERROR "A library is missing (see the lines above). ${QUENZA_SETUP_HINT}")
endif()

add_library(tinyxml INTERFACE)
target_include_directories(tinyxml SYSTEM INTERFACE ${TINYXML_INCLUDE_DIR})
target_link_libraries(tinyxml INTERFACE ${TINYXML_LIBRARY})
target_compile_definitions(tinyxml INTERFACE TIXML_USE_STL)

add_library(minizip INTERFACE)
target_include_directories(minizip SYSTEM INTERFACE ${MINIZIP_INCLUDE_DIR})
target_link_libraries(minizip INTERFACE ${MINIZIP_LIBRARY})

add_library(openimageio INTERFACE)
target_include_directories(openimageio SYSTEM INTERFACE ${OPENIMAGEIO_INCLUDE_DIR})
target_link_libraries(openimageio INTERFACE ${OPENIMAGEIO_LIBRARY} ${OPENIMAGEIO_UTIL_LIBRARY})

# Built by Debian with all of its options, which change the layout of its classes.
add_library(httplib INTERFACE)
target_include_directories(httplib SYSTEM INTERFACE ${HTTPLIB_INCLUDE_DIR})
target_link_libraries(httplib INTERFACE ${HTTPLIB_LIBRARY})
target_compile_definitions(httplib INTERFACE CPPHTTPLIB_OPENSSL_SUPPORT CPPHTTPLIB_ZLIB_SUPPORT CPPHTTPLIB_BROTLI_SUPPORT)

# Headers that stand alone; one source of the engine holds the implementation.
add_library(stb INTERFACE)
target_include_directories(stb SYSTEM INTERFACE ${STB_INCLUDE_DIR})

find_package(Threads REQUIRED)

if(QUENZA_BUILD_TESTS)
  find_package(GTest)
  if(NOT GTest_FOUND)
    message(FATAL_ERROR "GoogleTest is missing. ${QUENZA_SETUP_HINT}")
  endif()
  include(GoogleTest)
endif()
if(QUENZA_BUILD_BENCH)
  find_package(benchmark)
  if(NOT benchmark_FOUND)
    message(FATAL_ERROR "Google Benchmark is missing. ${QUENZA_SETUP_HINT}")
  endif()
endif()
