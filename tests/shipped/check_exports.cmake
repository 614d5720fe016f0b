# Fails unless LIBRARY exports exactly the names in EXPORTS. Needs NM.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} -D --defined-only --format=posix ${LIBRARY}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX REPLACE "\n$" "" symbols "${symbols}")
string(REPLACE "\n" ";" symbols "${symbols}")
list(TRANSFORM symbols REPLACE " .*" "")
list(SORT symbols)

file(STRINGS ${EXPORTS} expected)
list(LENGTH expected count)
if(NOT count EQUAL 30)
  message(FATAL_ERROR "${EXPORTS} lists ${count} names, not 28 functions and 2 data items")
endif()
list(SORT expected)

set(missing ${expected})
list(REMOVE_ITEM missing ${symbols})
set(surplus ${symbols})
list(REMOVE_ITEM surplus ${expected})
if(missing OR surplus)
  message(FATAL_ERROR "${LIBRARY}: missing: ${missing}; surplus: ${surplus}")
endif()
