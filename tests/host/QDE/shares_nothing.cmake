# Fails when an object that is compiled for a level of processors has code or
# data that the linker may take for another file's: it would run everywhere.
# usage: cmake -D NM=PROGRAM -D OBJECTS=LIST -P shares_nothing.cmake

list(FILTER OBJECTS INCLUDE REGEX "_(sse41|avx2|avx512)\\.cpp\\.")
list(LENGTH OBJECTS count)
if(NOT count EQUAL 3)
  message(FATAL_ERROR "${count} objects of levels, not 3: ${OBJECTS}")
endif()
foreach(object IN LISTS OBJECTS)
  execute_process(COMMAND ${NM} --demangle --defined-only ${object}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  if(NOT symbols MATCHES " D qde::k[A-Za-z0-9]+Routines")
    message(FATAL_ERROR "${object}: no table of routines")
  endif()
  if(symbols MATCHES " [WwVvu] [^\n]*")
    message(FATAL_ERROR "${object}: shared:${CMAKE_MATCH_0}")
  endif()
endforeach()
