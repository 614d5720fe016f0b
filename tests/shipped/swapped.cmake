# The recorder as six libraries with the names of the imports, beneath the shipped
# library, which must use the libraries that the host loads.
set(swapped ${PROJECT_BINARY_DIR}/swapped)

pxl_add_test(swapped_imports_tests swapped_imports_test.cpp)
target_link_libraries(swapped_imports_tests PRIVATE PXL recorder_shared test_system)
target_compile_definitions(swapped_imports_tests PRIVATE
  SWAPPED_FOLDER="${swapped}" SHIPPED_FILE="$<TARGET_FILE:PXL>"
  LIBRARY_PREFIX="${CMAKE_SHARED_LIBRARY_PREFIX}" LIBRARY_SUFFIX="${CMAKE_SHARED_LIBRARY_SUFFIX}")

# Nothing in them but where the names are: all of them are in the recorder.
foreach(name IN LISTS PXL_IMPORTS)
  add_library(swapped_${name} SHARED no_code.c)
  set_target_properties(swapped_${name} PROPERTIES OUTPUT_NAME ${name} LINKER_LANGUAGE CXX
    LIBRARY_OUTPUT_DIRECTORY ${swapped} RUNTIME_OUTPUT_DIRECTORY ${swapped}
    ARCHIVE_OUTPUT_DIRECTORY ${swapped}/lib)
  add_dependencies(swapped_imports_tests swapped_${name})
endforeach()
include(swapped_${PXL_SYSTEM}.cmake)
