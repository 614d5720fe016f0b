# Code for one level of processor must not stand in for code of all processors.
# The linker takes one of all functions with a name, so that the objects of a
# level may share only functions with the level in their name. Needs NM, and OBJECTS of
# which those for a level are checked.
cmake_minimum_required(VERSION 3.25)

set(looked_at 0)
foreach(object IN LISTS OBJECTS)
  if(NOT object MATCHES "_(sse41|avx2|avx512)\\.cpp")
    continue()
  endif()
  math(EXPR looked_at "${looked_at} + 1")
  set(level ${CMAKE_MATCH_1})
  execute_process(COMMAND ${NM} -C --defined-only ${object}
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "[^\n]* [Wu] [^\n]*" shared "${symbols}")
  foreach(symbol IN LISTS shared)
    string(TOLOWER "${symbol}" name)
    if(NOT name MATCHES "vector${level}")
      message(SEND_ERROR "${object} shares ${symbol}")
    endif()
  endforeach()
endforeach()
if(looked_at EQUAL 0)
  message(FATAL_ERROR "there is no object for a level among: ${OBJECTS}")
endif()
