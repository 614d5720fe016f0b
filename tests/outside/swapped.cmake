# The recorder once more, as six libraries with the names of the imports, laid
# beneath the shipped library: it has to do with whatever the host gives it.
set(recorder ${PROJECT_SOURCE_DIR}/tests/recorder)
add_library(recorder_shared SHARED
  ${recorder}/recorder.cpp
  ${recorder}/recorder_K.cpp
  ${recorder}/recorder_QDE.cpp
  ${recorder}/recorder_others.cpp
  ${recorder}/recorder_vetrix.cpp)
target_link_libraries(recorder_shared PUBLIC pxl_flags)
set_target_properties(recorder_shared PROPERTIES
  CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)

pxl_add_test(swapped_imports_tests swapped_imports_test.cpp)
set(swapped ${PROJECT_BINARY_DIR}/swapped)
foreach(name IN LISTS PXL_IMPORTS)
  # Nothing in it but that it needs the recorder, which has all the names.
  add_library(swapped_${name} SHARED ${recorder}/no_code.c)
  target_link_options(swapped_${name} PRIVATE -Wl,--no-as-needed)
  target_link_libraries(swapped_${name} PRIVATE recorder_shared)
  set_target_properties(swapped_${name} PROPERTIES
    OUTPUT_NAME ${name} LIBRARY_OUTPUT_DIRECTORY ${swapped} LINKER_LANGUAGE CXX)
  add_dependencies(swapped_imports_tests swapped_${name})
endforeach()

target_link_libraries(swapped_imports_tests PRIVATE PXL recorder_shared)
target_compile_definitions(swapped_imports_tests PRIVATE SWAPPED_FOLDER="${swapped}")
set_tests_properties(swapped_imports_tests PROPERTIES
  ENVIRONMENT LD_LIBRARY_PATH=${swapped})
