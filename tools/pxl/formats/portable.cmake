# Picture file libraries that are headers alone, except zlib. This project's warnings
# are off for their code, and its undefined behaviour is not reported; stray
# accesses are.
add_library(picture_libraries STATIC EXCLUDE_FROM_ALL header_only_libraries.cpp)
target_compile_definitions(picture_libraries PUBLIC TINYEXR_USE_MINIZ=0)
target_link_libraries(picture_libraries PUBLIC ZLIB::ZLIB)
if(CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  target_compile_options(picture_libraries PRIVATE -fno-sanitize=undefined)
endif()

add_library(portable_formats OBJECT EXCLUDE_FROM_ALL)
target_link_libraries(portable_formats PUBLIC picture_libraries PRIVATE pxl_flags)
