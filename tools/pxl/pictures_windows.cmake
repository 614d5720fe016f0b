# The libraries behind files of pictures and the letters in them: headers alone,
# but for zlib, which is linked into the program.
include(portable_libraries.cmake)
target_link_libraries(picture_libraries PUBLIC stb::stb tinyexr::tinyexr)

target_sources(pxl_pictures PRIVATE
  exr_file_tinyexr.cpp
  exr_layout.cpp
  label_stb.cpp
  png_chunks.cpp
  png_file_stb.cpp)
target_link_libraries(pxl_pictures PRIVATE picture_libraries)
