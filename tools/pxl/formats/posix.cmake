# The libraries behind files of pictures and the letters in them.
find_package(PNG REQUIRED)
find_package(OpenEXR 3.1 REQUIRED)
find_package(Freetype REQUIRED)

target_sources(pxl_pictures PRIVATE exr_file_openexr.cpp png_file_libpng.cpp)
target_link_libraries(pxl_pictures PRIVATE PNG::PNG OpenEXR::OpenEXR Freetype::Freetype)

# Tests and fuzzers have the file libraries of the Windows build as well.
if(PXL_BUILD_TESTS)
  find_package(ZLIB REQUIRED)
  include(portable.cmake)
endif()
