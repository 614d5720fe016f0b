# What cpack makes: on Linux three Debian packages, on Windows one archive of
# everything; on both the sources.

set(CPACK_PACKAGE_NAME pxl)
set(CPACK_PACKAGE_VENDOR Orvanta)
set(CPACK_PACKAGE_CONTACT "Orvanta PXL <pxl@orvanta.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "The bitmap module: image buffers for a compositing host")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME pxl-${PROJECT_VERSION}-windows-x64)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

  set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libpxl${PROJECT_VERSION_MAJOR})
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
  set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The module, and stand-ins of what it imports")
  set(CPACK_DEBIAN_DEV_PACKAGE_NAME libpxl-dev)
  set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
  set(CPACK_COMPONENT_DEV_DESCRIPTION "Headers and build files of the module")
  set(CPACK_COMPONENT_DEV_DEPENDS runtime)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME pxl-tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION graphics)
  set(CPACK_COMPONENT_TOOLS_DESCRIPTION "pxl, which converts and compares pictures")
  set(CPACK_COMPONENT_TOOLS_DEPENDS runtime)

  # What the system's own libraries are called is found out; ours are in the
  # packages themselves.
  set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
endif()

set(CPACK_SOURCE_GENERATOR TGZ)
set(CPACK_SOURCE_PACKAGE_FILE_NAME pxl-${PROJECT_VERSION}-source)
set(CPACK_SOURCE_IGNORE_FILES "/build/;/\\.git/;/\\.git$")
include(CPack)
