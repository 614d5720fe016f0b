# The code of libraries for files and letters that are headers alone. It is not
# held to this project's warnings.
add_library(picture_libraries STATIC
  ${PROJECT_SOURCE_DIR}/tools/pxl/exr_implementation.cpp
  ${PROJECT_SOURCE_DIR}/tools/pxl/stb_implementation.cpp)
target_compile_definitions(picture_libraries PUBLIC TINYEXR_USE_MINIZ=0)
target_link_libraries(picture_libraries PUBLIC ZLIB::ZLIB)
