# The file libraries for Windows cannot make all kinds of files, so that there are
# fewer tests; the samples are read.
target_sources(pxl_pictures_test PRIVATE picture_files_windows_test.cpp program.cpp)
target_compile_definitions(pxl_pictures_test PRIVATE ${test_definitions})

target_sources(pxl_program_test PRIVATE
  program_windows_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/system/variables_windows.cpp)

# Wine's own folder of fonts may be empty.
set_tests_properties(pxl_pictures_test pxl_program_test PROPERTIES
  ENVIRONMENT PXL_FONT=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf)
