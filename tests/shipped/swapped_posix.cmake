# A library that is needed has its names looked up by all; where libraries are
# looked for is said by the environment.
foreach(name IN LISTS PXL_IMPORTS)
  target_link_options(swapped_${name} PRIVATE -Wl,--no-as-needed)
  target_link_libraries(swapped_${name} PRIVATE recorder_shared)
endforeach()
set_tests_properties(swapped_imports_tests PROPERTIES
  ENVIRONMENT LD_LIBRARY_PATH=${swapped})
