# The libraries behind files of pictures and the letters in them.
target_sources(pxl_pictures PRIVATE exr_file_openexr.cpp png_file_libpng.cpp)
target_link_libraries(pxl_pictures PRIVATE PNG::PNG OpenEXR::OpenEXR Freetype::Freetype)

# Tests and fuzzers have the file libraries of the Windows build as well.
if(PXL_BUILD_TESTS)
  include(portable.cmake)
endif()
