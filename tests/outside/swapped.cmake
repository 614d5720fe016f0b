# The recorder once more, as six libraries with the names of the imports, laid
# beneath the shipped library: it has to do with whatever the host gives it.
set(recorder ${PROJECT_SOURCE_DIR}/tests/recorder)
set(swapped ${PROJECT_BINARY_DIR}/swapped)
add_library(recorder_shared SHARED
  ${recorder}/recorder.cpp
  ${recorder}/recorder_K.cpp
  ${recorder}/recorder_QDE.cpp
  ${recorder}/recorder_others.cpp
  ${recorder}/recorder_vetrix.cpp)
target_link_libraries(recorder_shared PUBLIC pxl_flags)
target_compile_definitions(recorder_shared PRIVATE
  QDE_EXPORTS K_EXPORTS VETRIX_EXPORTS TRC_EXPORTS Q_EXPORTS TXT_EXPORTS)
set_target_properties(recorder_shared PROPERTIES
  CXX_VISIBILITY_PRESET default VISIBILITY_INLINES_HIDDEN OFF)

pxl_add_test(swapped_imports_tests swapped_imports_test.cpp
  ${PROJECT_SOURCE_DIR}/tests/system/loaded_files_${PXL_SYSTEM}.cpp)
target_link_libraries(swapped_imports_tests PRIVATE PXL recorder_shared)
target_compile_definitions(swapped_imports_tests PRIVATE
  SWAPPED_FOLDER="${swapped}" SHIPPED_FILE="$<TARGET_FILE:PXL>"
  LIBRARY_PREFIX="${CMAKE_SHARED_LIBRARY_PREFIX}" LIBRARY_SUFFIX="${CMAKE_SHARED_LIBRARY_SUFFIX}")

# Nothing in them but where the names are: all of them are in the recorder.
foreach(name IN LISTS PXL_IMPORTS)
  add_library(swapped_${name} SHARED ${recorder}/no_code.c)
  set_target_properties(swapped_${name} PROPERTIES OUTPUT_NAME ${name} LINKER_LANGUAGE CXX
    LIBRARY_OUTPUT_DIRECTORY ${swapped} RUNTIME_OUTPUT_DIRECTORY ${swapped}
    ARCHIVE_OUTPUT_DIRECTORY ${swapped}/lib)
  add_dependencies(swapped_imports_tests swapped_${name})
endforeach()
include(swapped_${PXL_SYSTEM}.cmake)
