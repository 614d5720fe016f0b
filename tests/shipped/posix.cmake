# Exports and imports of ELF libraries.
find_program(PXL_NM nm REQUIRED)
find_program(PXL_READELF readelf REQUIRED)

add_test(NAME exports COMMAND ${CMAKE_COMMAND}
  -D NM=${PXL_NM} -D LIBRARY=$<TARGET_FILE:PXL> -D EXPORTS=${PXL_EXPORTS_FILE}
  -P ${CMAKE_CURRENT_SOURCE_DIR}/check_exports.cmake)

set(PXL_IMPORTS QDE K vetrix TRC Q TXT)
list(TRANSFORM PXL_IMPORTS REPLACE "(.+)" "lib\\1.so" OUTPUT_VARIABLE import_files)
function(pxl_add_dependency_test library soname)
  list(JOIN ARGN "$<SEMICOLON>" imports)
  add_test(NAME dependencies_of_${library} COMMAND ${CMAKE_COMMAND}
    -D READELF=${PXL_READELF} -D LIBRARY=$<TARGET_FILE:${library}> -D SONAME=${soname}
    "-DIMPORTS=${imports}" -P ${CMAKE_CURRENT_SOURCE_DIR}/check_dependencies.cmake)
endfunction()
pxl_add_dependency_test(PXL libPXL.so.${PROJECT_VERSION_MAJOR} ${import_files})
pxl_add_dependency_test(vetrix libvetrix.so)
pxl_add_dependency_test(TRC libTRC.so)
pxl_add_dependency_test(K libK.so libTRC.so libvetrix.so)
pxl_add_dependency_test(QDE libQDE.so libK.so libTRC.so)
pxl_add_dependency_test(Q libQ.so)
pxl_add_dependency_test(TXT libTXT.so)

foreach(target pxl_kernels QDE_rows simd)
  add_test(NAME levels_of_${target} COMMAND ${CMAKE_COMMAND} -D NM=${PXL_NM}
    "-DOBJECTS=$<TARGET_OBJECTS:${target}>"
    -P ${CMAKE_CURRENT_SOURCE_DIR}/check_levels.cmake)
endforeach()

if(CMAKE_BUILD_TYPE STREQUAL "Release")
  add_test(NAME calls_of_PXL COMMAND ${CMAKE_COMMAND} -D NM=${PXL_NM}
    -D LIBRARY=$<TARGET_FILE:PXL> -P ${CMAKE_CURRENT_SOURCE_DIR}/check_calls.cmake)
  include(swapped.cmake)
  foreach(target PXL QDE K vetrix TRC Q TXT pxl)
    # Not all have arrays on their stacks, or buffers that the runtime fills.
    set(guarded FALSE)
    if(target MATCHES "^(K|pxl)$")
      set(guarded TRUE)
    endif()
    add_test(NAME hardening_of_${target} COMMAND ${CMAKE_COMMAND}
      -D READELF=${PXL_READELF} -D FILE=$<TARGET_FILE:${target}> -D GUARDED=${guarded}
      -P ${CMAKE_CURRENT_SOURCE_DIR}/check_hardening.cmake)
  endforeach()
endif()
