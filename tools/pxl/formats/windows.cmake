# The libraries behind files of pictures and the letters in them: headers alone,
# but for zlib, which is linked into the program.
include(portable.cmake)
target_link_libraries(picture_libraries PUBLIC stb::stb tinyexr::tinyexr)

target_sources(pxl_pictures PRIVATE $<TARGET_OBJECTS:portable_formats>)
target_link_libraries(pxl_pictures PRIVATE picture_libraries)
