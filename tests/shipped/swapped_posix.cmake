# The names of a needed library are visible to all others; the environment names the
# folder of the libraries.
foreach(name IN LISTS PXL_IMPORTS)
  target_link_options(swapped_${name} PRIVATE -Wl,--no-as-needed)
  target_link_libraries(swapped_${name} PRIVATE recorder_shared)
endforeach()
set_tests_properties(swapped_imports_tests PROPERTIES
  ENVIRONMENT LD_LIBRARY_PATH=${swapped})
