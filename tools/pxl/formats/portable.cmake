# Files of pictures by libraries that are headers alone, but for zlib. Their code
# is not held to this project's warnings, and what is undefined in it is theirs to
# mend; stray accesses still count.
add_library(picture_libraries STATIC EXCLUDE_FROM_ALL
  exr_implementation.cpp
  stb_implementation.cpp)
target_compile_definitions(picture_libraries PUBLIC TINYEXR_USE_MINIZ=0)
target_link_libraries(picture_libraries PUBLIC ZLIB::ZLIB)
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  target_compile_options(picture_libraries PRIVATE -fno-sanitize=undefined)
endif()

add_library(portable_formats OBJECT EXCLUDE_FROM_ALL
  exr_file_tinyexr.cpp
  exr_layout.cpp
  png_chunks.cpp
  png_file_stb.cpp)
target_link_libraries(portable_formats PUBLIC picture_libraries PRIVATE pxl_flags)
