# The libraries that read and write picture files and draw letters: headers alone,
# except zlib, which is linked into the program.
include(portable.cmake)
target_link_libraries(picture_libraries PUBLIC stb::stb tinyexr::tinyexr)

target_sources(pxl_picture_files PRIVATE $<TARGET_OBJECTS:portable_formats>)
target_link_libraries(pxl_picture_files PRIVATE picture_libraries)
