# exports.txt is the one list of what libPXL exports. This turns it into the
# linker's version script; no version name, so the exports stay undecorated.

set(PXL_EXPORTS_FILE ${PROJECT_SOURCE_DIR}/cmake/exports.txt)
set(PXL_VERSION_SCRIPT ${PROJECT_BINARY_DIR}/PXL.map)
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS
  ${PXL_EXPORTS_FILE})

file(STRINGS ${PXL_EXPORTS_FILE} pxl_exports)
list(JOIN pxl_exports ";\n    " pxl_export_lines)
file(CONFIGURE OUTPUT ${PXL_VERSION_SCRIPT} @ONLY
  CONTENT "{\n  global:\n    @pxl_export_lines@;\n  local:\n    *;\n};\n")
