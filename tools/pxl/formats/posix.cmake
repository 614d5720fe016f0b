# The libraries that read and write picture files and draw letters.
target_link_libraries(pxl_picture_files PRIVATE PNG::PNG OpenEXR::OpenEXR Freetype::Freetype)

# Tests and fuzzers use the file libraries of the Windows build as well.
if(PXL_BUILD_TESTS)
  include(portable.cmake)
endif()
