# Finds every library that the targets link to, before any target is made, so that
# one message names all that is missing.

set(missing_packages "")

# pxl_find(NAME [MINIMUM VERSION]): a macro, since some of what find_package sets
# must reach the caller.
macro(pxl_find name)
  find_package(${name} ${ARGN} QUIET)
  if(NOT ${name}_FOUND)
    string(JOIN " " wanted ${name} ${ARGN})
    list(APPEND missing_packages ${wanted})
  endif()
endmacro()

# pxl_find_header(NAME HEADER): a library of headers that comes without a package
# file for CMake.
function(pxl_find_header name header)
  find_path(PXL_${name}_INCLUDE ${header})
  if(NOT PXL_${name}_INCLUDE)
    list(APPEND missing_packages "${name} (${header})")
    set(missing_packages ${missing_packages} PARENT_SCOPE)
  endif()
endfunction()

pxl_find(Threads)
foreach(package IN ITEMS CLI11 fmt nlohmann_json spdlog tomlplusplus utf8cpp)
  pxl_find(${package})
endforeach()
# The target had a plain name before version 4.
if(utf8cpp_FOUND AND NOT TARGET utf8cpp::utf8cpp)
  add_library(utf8cpp::utf8cpp ALIAS utf8cpp)
endif()

if(WIN32)
  set(ZLIB_USE_STATIC_LIBS ON)
  foreach(package IN ITEMS ZLIB stb tinyexr)
    pxl_find(${package})
  endforeach()
else()
  pxl_find(PNG)
  pxl_find(OpenEXR 3.1)
  pxl_find(Freetype)
endif()

if(PXL_BUILD_TESTS)
  pxl_find(GTest)
  pxl_find(Python3 COMPONENTS Interpreter)
  if(GTest_FOUND AND NOT TARGET GTest::gmock)
    list(APPEND missing_packages "GMock (a part of GTest)")
  endif()
  if(NOT WIN32)
    # The readers of the Windows build are tested on this system, too.
    pxl_find(ZLIB)
    pxl_find_header(stb stb/stb_image.h)
    pxl_find_header(tinyexr tinyexr.h)
  endif()
endif()

if(PXL_BUILD_BENCH)
  pxl_find(benchmark)
endif()

if(missing_packages)
  list(JOIN missing_packages ", " missing_packages)
  message(FATAL_ERROR "CMake does not find: ${missing_packages}.\n"
    "docs/building.md says what each of them is for and what Debian calls it.")
endif()
