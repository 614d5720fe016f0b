# The conversions of rows, for each level of processor, and the tables that they
# read: apart from the module, so that the proof of the levels has them too.
set(PXL_KERNEL_SOURCES
  transfer/conversion_tables.cpp
  transfer/kernels/from_8.cpp
  transfer/kernels/kernels_avx2.cpp
  transfer/kernels/kernels_avx512.cpp
  transfer/kernels/kernels_sse41.cpp
  transfer/kernels/selection.cpp
  transfer/kernels/to_8.cpp)
add_library(pxl_kernels STATIC ${PXL_KERNEL_SOURCES})
target_link_libraries(pxl_kernels PUBLIC simd PRIVATE pxl_flags)
pxl_raise_levels(pxl_kernels)

# The module, twice from one list of sources: the shared library that ships,
# and a static one in which tests reach the internals and put a recorder in
# the place of the imports.

set(PXL_SOURCES
  memory/caught_code.cpp
  memory/failure_report.cpp
  memory/frame_allocator.cpp
  memory/frame_settings.cpp
  memory/mapped_provider.cpp
  state/clearing.cpp
  state/locking.cpp
  state/messages/catalogue.cpp
  state/messages/reports.cpp
  state/reload.cpp
  state/resize_frame.cpp
  state/surface_update.cpp
  state/update.cpp
  transfer/blit.cpp
  transfer/deep_blit.cpp
  transfer/pixel_conversion.cpp
  transfer/row_address.cpp
  world/build.cpp
  world/channel_order.cpp
  world/creation.cpp
  world/disposal.cpp
  world/frame_world.cpp
  world/geometry.cpp
  world/lifecycle.cpp
  world/surface_world.cpp
  world/validity.cpp
  world/version_check.cpp)

function(pxl_add_module name kind)
  add_library(${name} ${kind} ${PXL_SOURCES})
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
