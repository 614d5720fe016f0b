# Fails unless LIBRARY exports exactly the names in EXPORTS. Needs OBJDUMP.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/read_exports_windows.cmake)

file(STRINGS ${EXPORTS} expected)
list(LENGTH expected count)
if(NOT count EQUAL 30)
  message(FATAL_ERROR "${EXPORTS} lists ${count} names, not 28 functions and 2 data items")
endif()
list(SORT expected)
if(NOT exported STREQUAL expected)
  message(FATAL_ERROR "${LIBRARY} exports ${exported}, not ${expected}")
endif()
