# A name is looked up in the library that the import table names, so that each of
# the six forwards all imports of the module to the recorder.
target_link_options(recorder_shared PRIVATE -Wl,--export-all-symbols)
# The program knows the recorder's own interface and calls no import, so that it
# does not matter where those are.
target_compile_definitions(recorder_shared INTERFACE QDE_STATIC K_STATIC VETRIX_STATIC)
foreach(name IN LISTS PXL_IMPORTS)
  set(definition ${swapped}/lib/${name}.def)
  add_custom_command(OUTPUT ${definition}
    COMMAND ${CMAKE_COMMAND} -D OBJDUMP=${CMAKE_OBJDUMP} -D IMPORT=${name}
      -D CALLER=$<TARGET_FILE:PXL> -D LIBRARY=$<TARGET_FILE:recorder_shared>
      -D OUTPUT=${definition} -P ${CMAKE_CURRENT_SOURCE_DIR}/forward_imports_windows.cmake
    DEPENDS PXL recorder_shared forward_imports_windows.cmake VERBATIM)
  target_sources(swapped_${name} PRIVATE ${definition})
endforeach()

# Libraries are looked for beside the program. So it has a folder of its own, with
# a copy of the library that ships.
set_target_properties(swapped_imports_tests recorder_shared PROPERTIES
  RUNTIME_OUTPUT_DIRECTORY ${swapped})
file(COPY ${PXL_RUNTIME_FILES} DESTINATION ${swapped})
add_custom_command(OUTPUT ${swapped}/PXL.dll
  COMMAND ${CMAKE_COMMAND} -E copy $<TARGET_FILE:PXL> ${swapped}/PXL.dll
  DEPENDS PXL VERBATIM)
add_custom_target(copied_PXL DEPENDS ${swapped}/PXL.dll)
add_dependencies(swapped_imports_tests copied_PXL)
