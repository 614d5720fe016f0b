# Writes to OUTPUT the definition of a library IMPORT that refers to LIBRARY for
# every name that CALLER imports of it. Fails when there is no such name, or
# LIBRARY lacks one. Needs OBJDUMP.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/read_exports_windows.cmake)

execute_process(COMMAND ${OBJDUMP} -p ${CALLER}
  OUTPUT_VARIABLE description COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "DLL Name: ${IMPORT}\\.dll\n[^\n]*\n(\t[0-9a-f]+\t[^\n]*\n)*"
  table "${description}")
string(REGEX MATCHALL "\n\t[0-9a-f]+\t *[0-9]+ +[^\n]+" names "${table}")
list(TRANSFORM names REPLACE ".* " "")
if(NOT names)
  message(FATAL_ERROR "${CALLER} imports nothing of ${IMPORT}")
endif()

get_filename_component(library ${LIBRARY} NAME_WE)
set(content "LIBRARY ${IMPORT}\nEXPORTS\n")
foreach(name IN LISTS names)
  if(NOT name IN_LIST exported)
    message(FATAL_ERROR "${LIBRARY} has no ${name}, which ${CALLER} wants of ${IMPORT}")
  endif()
  string(APPEND content "  ${name} = ${library}.${name}\n")
endforeach()
file(WRITE ${OUTPUT} "${content}")
