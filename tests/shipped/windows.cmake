# Exports and imports of the libraries on Windows.
add_test(NAME exports COMMAND ${CMAKE_COMMAND}
  -D OBJDUMP=${CMAKE_OBJDUMP} -D LIBRARY=$<TARGET_FILE:PXL> -D EXPORTS=${PXL_EXPORTS_FILE}
  -P ${CMAKE_CURRENT_SOURCE_DIR}/check_exports_windows.cmake)

set(PXL_IMPORTS QDE K vetrix TRC Q TXT)
# The imports of each library in addition to the system and the language's runtime.
function(pxl_add_dependency_test library)
  list(TRANSFORM ARGN APPEND .dll)
  list(JOIN ARGN "$<SEMICOLON>" imports)
  add_test(NAME dependencies_of_${library} COMMAND ${CMAKE_COMMAND}
    -D OBJDUMP=${CMAKE_OBJDUMP} -D LIBRARY=$<TARGET_FILE:${library}> "-DIMPORTS=${imports}"
    -P ${CMAKE_CURRENT_SOURCE_DIR}/check_dependencies_windows.cmake)
endfunction()
pxl_add_dependency_test(PXL ${PXL_IMPORTS})
pxl_add_dependency_test(vetrix)
pxl_add_dependency_test(TRC)
pxl_add_dependency_test(K TRC vetrix)
pxl_add_dependency_test(QDE K TRC)
pxl_add_dependency_test(Q)
pxl_add_dependency_test(TXT)

# Each imported library exports the functions that its headers declare.
foreach(library IN LISTS PXL_IMPORTS)
  add_test(NAME exports_of_${library} COMMAND ${CMAKE_COMMAND}
    -D OBJDUMP=${CMAKE_OBJDUMP} -D LIBRARY=$<TARGET_FILE:${library}>
    -D HEADER=${PROJECT_SOURCE_DIR}/platform/${library}.h
    -D HOST_HEADER=${PROJECT_SOURCE_DIR}/host/${library}/include/${library}_host.h
    -P ${CMAKE_CURRENT_SOURCE_DIR}/check_interface_windows.cmake)
endforeach()

# The stack holds wide vectors wherever they fall.
foreach(library IN ITEMS PXL QDE)
  add_test(NAME vector_moves_of_${library} COMMAND ${CMAKE_COMMAND}
    -D OBJDUMP=${CMAKE_OBJDUMP} -D LIBRARY=$<TARGET_FILE:${library}>
    -P ${CMAKE_CURRENT_SOURCE_DIR}/check_vector_moves_windows.cmake)
endforeach()

include(swapped.cmake)
