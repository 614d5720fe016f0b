# Most tests make their pictures with the file libraries, and check messages that
# hold what the system says.
find_package(PNG REQUIRED)
find_package(OpenEXR 3.1 REQUIRED)

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
  hostile_pictures_test.cpp
  indexed_test.cpp
  language_test.cpp
  modes_test.cpp
  sheet_pictures.cpp
  sheet_test.cpp
  streams_posix_test.cpp
  usage_test.cpp)
target_link_libraries(pxl_program_test PRIVATE test_pictures)
