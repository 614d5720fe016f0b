# What `cmake --install` puts where: a prefix that may be moved as a whole.
#
#   include/PXL/          PXL.h, PXL_Types.h
#   include/PXL/host/     the stand-ins' headers, with what the module imports
#                         of them in platform/
#   lib/                  the module
#   lib/pxl-host/         the stand-ins, which it finds there unless the host has
#                         loaded its own libraries of those names before
#   lib/cmake/PXL/, lib/pkgconfig/, bin/pxl, share/
#
# On Windows all libraries stand beside the programs in bin/, with those of the
# compiler's runtime; lib/ has what links to them.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(headers ${CMAKE_INSTALL_INCLUDEDIR}/PXL)
set(package ${CMAKE_INSTALL_LIBDIR}/cmake/PXL)
set(stand_in_folder ${CMAKE_INSTALL_LIBDIR}/pxl-host)
set(stand_ins QDE K vetrix TRC Q TXT)

if(NOT WIN32)
  set_target_properties(PXL PROPERTIES INSTALL_RPATH "$ORIGIN/pxl-host")
  set_target_properties(${stand_ins} PROPERTIES INSTALL_RPATH "$ORIGIN")
  set_target_properties(pxl PROPERTIES INSTALL_RPATH
    "$ORIGIN/../${CMAKE_INSTALL_LIBDIR};$ORIGIN/../${stand_in_folder}")
endif()

install(TARGETS PXL EXPORT PXLTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(TARGETS ${stand_ins} EXPORT PXLTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${stand_in_folder} COMPONENT runtime
  ARCHIVE DESTINATION ${stand_in_folder} COMPONENT dev)
install(TARGETS pxl RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)

install(FILES ${PROJECT_SOURCE_DIR}/include/PXL.h ${PROJECT_SOURCE_DIR}/include/PXL_Types.h
  DESTINATION ${headers} COMPONENT dev)
foreach(name IN LISTS stand_ins)
  install(FILES ${PROJECT_SOURCE_DIR}/host/${name}/include/${name}_host.h
    DESTINATION ${headers}/host COMPONENT dev)
  install(FILES ${PROJECT_SOURCE_DIR}/platform/${name}.h
    DESTINATION ${headers}/host/platform COMPONENT dev)
endforeach()

install(EXPORT PXLTargets NAMESPACE PXL:: DESTINATION ${package} COMPONENT dev)
configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/PXLConfig.cmake.in
  ${PROJECT_BINARY_DIR}/PXLConfig.cmake INSTALL_DESTINATION ${package})
# The interface is the major version: another one is not compatible.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PXLConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/PXLConfig.cmake ${PROJECT_BINARY_DIR}/PXLConfigVersion.cmake
  DESTINATION ${package} COMPONENT dev)

# pkg-config finds the prefix by where the file is.
file(RELATIVE_PATH PXL_PC_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" PXL_PC_PREFIX "${PXL_PC_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/pxl.pc.in ${PROJECT_BINARY_DIR}/pxl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/pxl.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/K/translations
  DESTINATION ${CMAKE_INSTALL_DATADIR}/pxl COMPONENT tools)

if(WIN32)
  include(windows/Install)
endif()

# The page of the manual, where there is what makes it.
find_program(PXL_SCDOC scdoc)
if(PXL_SCDOC AND NOT WIN32)
  set(page ${PROJECT_BINARY_DIR}/pxl.1)
  add_custom_command(OUTPUT ${page}
    COMMAND ${PXL_SCDOC} < ${PROJECT_SOURCE_DIR}/docs/pxl.1.scd > ${page}
    DEPENDS ${PROJECT_SOURCE_DIR}/docs/pxl.1.scd VERBATIM)
  add_custom_target(man_page ALL DEPENDS ${page})
  add_dependencies(pxl man_page)
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()
