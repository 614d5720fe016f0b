# The module, twice from one list of sources: the shared library that ships,
# and a static one for tests, which call its internals and replace the imports by
# a recorder.

function(pxl_add_module name kind)
  add_library(${name} ${kind})
  target_link_libraries(${name} PRIVATE pxl_flags pxl_kernels simd)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:include/PXL>)
endfunction()

pxl_add_module(PXL SHARED)
target_link_libraries(PXL PRIVATE QDE K vetrix TRC Q TXT)
pxl_export_only_listed(PXL)
pxl_refuse_undefined(PXL)
set_target_properties(PXL PROPERTIES
  DEFINE_SYMBOL PXL_EXPORTS
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR})

pxl_add_module(PXL_static STATIC)
target_compile_definitions(PXL_static PUBLIC
  PXL_STATIC QDE_STATIC K_STATIC VETRIX_STATIC TRC_STATIC Q_STATIC TXT_STATIC)

# Adds sources of the module. Called in the folder of the sources.
function(pxl_add_module_sources)
  target_sources(PXL PRIVATE ${ARGN})
  target_sources(PXL_static PRIVATE ${ARGN})
endfunction()
