# The libraries behind files of pictures and the letters in them: headers alone,
# but for zlib, which is linked into the program.
set(ZLIB_USE_STATIC_LIBS ON)
find_package(ZLIB REQUIRED)
find_package(stb REQUIRED)
find_package(tinyexr REQUIRED)

target_sources(pxl_pictures PRIVATE
  exr_file_tinyexr.cpp
  label_stb.cpp
  png_chunks.cpp
  png_file_stb.cpp)
target_link_libraries(pxl_pictures PRIVATE picture_libraries)

# Their code, which is not held to this project's warnings.
add_library(picture_libraries STATIC exr_implementation.cpp stb_implementation.cpp)
target_compile_definitions(picture_libraries PUBLIC TINYEXR_USE_MINIZ=0)
target_link_libraries(picture_libraries PUBLIC stb::stb tinyexr::tinyexr ZLIB::ZLIB)
