# Fails when LIBRARY exports a name that its headers do not hold. Of a C++ name
# the outermost is looked for, the name space as a rule. Needs OBJDUMP.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/read_exports_windows.cmake)

file(READ ${HEADER} header)
if(EXISTS ${HOST_HEADER})
  file(READ ${HOST_HEADER} host_header)
  string(APPEND header "${host_header}")
endif()

foreach(name IN LISTS exported)
  set(word ${name})
  if(name MATCHES "^_Z")
    # A mangled name starts with the outermost one, its length before it.
    string(REGEX REPLACE "^_ZN?K?([0-9]+)(.*)$" "\\1;\\2" parts ${name})
    list(POP_FRONT parts length rest)
    string(SUBSTRING ${rest} 0 ${length} word)
  endif()
  if(NOT word OR NOT header MATCHES "[^A-Za-z0-9_]${word}[^A-Za-z0-9_]")
    message(FATAL_ERROR "${LIBRARY} exports ${name}, which its headers do not declare")
  endif()
endforeach()
