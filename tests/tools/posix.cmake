# Most tests make their pictures with the file libraries, and check messages that
# hold what the system says.
add_library(test_pictures STATIC exr_maker.cpp png_maker.cpp)
target_link_libraries(test_pictures PUBLIC pxl_flags pxl_pictures PNG::PNG OpenEXR::OpenEXR)

target_sources(pxl_pictures_test PRIVATE
  exr_file_test.cpp
  output_file_posix_test.cpp
  png_file_test.cpp)
target_link_libraries(pxl_pictures_test PRIVATE test_pictures)

target_sources(pxl_program_test PRIVATE
  backing_test.cpp
  convert_files_test.cpp
  convert_test.cpp
  demo_test.cpp
  diff_test.cpp
  doctor_posix_test.cpp
  hostile_pictures_test.cpp
  indexed_test.cpp
  language_test.cpp
  modes_test.cpp
  sheet_pictures.cpp
  sheet_test.cpp
  streams_posix_test.cpp
  usage_test.cpp)
target_link_libraries(pxl_program_test PRIVATE test_pictures)

# The file libraries of the Windows build are tested here, where there is what
# makes files of every kind. Not under a sanitizer: tinyexr loses what a damaged
# file made it allocate.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  include(${PROJECT_SOURCE_DIR}/tools/pxl/portable_libraries.cmake)
  pxl_add_test(portable_pictures_test
    ${PROJECT_SOURCE_DIR}/tools/pxl/exr_file_tinyexr.cpp
    ${PROJECT_SOURCE_DIR}/tools/pxl/exr_layout.cpp
    ${PROJECT_SOURCE_DIR}/tools/pxl/png_chunks.cpp
    ${PROJECT_SOURCE_DIR}/tools/pxl/png_file_stb.cpp
    exr_file_test.cpp
    exr_layout_test.cpp
    png_file_test.cpp)
  target_link_libraries(portable_pictures_test PRIVATE picture_libraries test_pictures)
endif()

add_test(NAME man_page COMMAND ${CMAKE_COMMAND}
  -D PROGRAM=$<TARGET_FILE:pxl> -D PAGE=${PROJECT_SOURCE_DIR}/docs/pxl.1.scd
  -P ${CMAKE_CURRENT_SOURCE_DIR}/check_man_page.cmake)

# Calls of the C library that fail. Not under a sanitizer, which takes the same
# calls' place.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  add_library(failing_calls MODULE failing_calls.cpp)
  target_link_libraries(failing_calls PRIVATE pxl_flags)
  target_compile_definitions(failing_calls PRIVATE _GNU_SOURCE)
  pxl_add_test(pxl_failing_calls_test
    failing_calls_test.cpp limits_posix_test.cpp program.cpp program_posix.cpp)
  target_link_libraries(pxl_failing_calls_test PRIVATE pxl_pictures)
  target_compile_definitions(pxl_failing_calls_test PRIVATE
    ${test_definitions} PXL_FAILING_CALLS="$<TARGET_FILE:failing_calls>")
  add_dependencies(pxl_failing_calls_test failing_calls pxl)
endif()
