# Turns exports.txt, the one list of the module's exports, into the linker's
# input: a version script, without a version name so that the exports stay
# undecorated, or on Windows a module definition.

set(PXL_EXPORTS_FILE ${PROJECT_SOURCE_DIR}/cmake/exports.txt)
set(PXL_EXPORTED_DATA PXL_G_zref PXLp_G)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${PXL_EXPORTS_FILE})

file(STRINGS ${PXL_EXPORTS_FILE} pxl_exports)
if(WIN32)
  set(PXL_LINKER_EXPORTS ${PROJECT_BINARY_DIR}/PXL.def)
  list(JOIN PXL_EXPORTED_DATA "|" pxl_data)
  list(TRANSFORM pxl_exports REPLACE "^(${pxl_data})$" "\\1 DATA")
  list(JOIN pxl_exports "\n  " pxl_export_lines)
  file(CONFIGURE OUTPUT ${PXL_LINKER_EXPORTS} @ONLY
    CONTENT "LIBRARY PXL\nEXPORTS\n  @pxl_export_lines@\n")
else()
  set(PXL_LINKER_EXPORTS ${PROJECT_BINARY_DIR}/PXL.map)
  list(JOIN pxl_exports ";\n    " pxl_export_lines)
  file(CONFIGURE OUTPUT ${PXL_LINKER_EXPORTS} @ONLY
    CONTENT "{\n  global:\n    @pxl_export_lines@;\n  local:\n    *;\n};\n")
endif()

function(pxl_export_only_listed library)
  if(WIN32)
    target_link_options(${library} PRIVATE ${PXL_LINKER_EXPORTS})
  else()
    target_link_options(${library} PRIVATE -Wl,--version-script=${PXL_LINKER_EXPORTS})
  endif()
  set_property(TARGET ${library} APPEND PROPERTY LINK_DEPENDS ${PXL_LINKER_EXPORTS})
endfunction()
