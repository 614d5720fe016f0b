# Fails unless LIBRARY has the soname SONAME and needs all of IMPORTS and beyond
# them only the language's own runtime. Needs READELF.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${READELF} -d ${LIBRARY}
  OUTPUT_VARIABLE dynamic COMMAND_ERROR_IS_FATAL ANY)

string(REGEX MATCH "SONAME[^\n]*\\[([^]]*)\\]" ignored "${dynamic}")
if(NOT CMAKE_MATCH_1 STREQUAL SONAME)
  message(FATAL_ERROR "${LIBRARY} has the soname ${CMAKE_MATCH_1}, not ${SONAME}")
endif()

string(REGEX MATCHALL "NEEDED[^\n]*" lines "${dynamic}")
list(TRANSFORM lines REPLACE ".*\\[([^]]*)\\].*" "\\1" OUTPUT_VARIABLE needed)
foreach(import IN LISTS IMPORTS)
  if(NOT import IN_LIST needed)
    message(FATAL_ERROR "${LIBRARY} does not need ${import}")
  endif()
endforeach()

list(REMOVE_ITEM needed ${IMPORTS})
list(FILTER needed EXCLUDE REGEX "^(libstdc\\+\\+|libc|libm|libgcc_s|ld-linux.*)\\.so")
if(needed)
  message(FATAL_ERROR "${LIBRARY} also needs ${needed}")
endif()
