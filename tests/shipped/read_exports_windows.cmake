# Sets `exported` to the names that LIBRARY exports, sorted. Needs OBJDUMP.
execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY}
  OUTPUT_VARIABLE description COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCH "\\[Ordinal/Name Pointer\\] Table\n(\t\\[ *[0-9]+\\][^\n]*\n)*"
  table "${description}")
string(REGEX MATCHALL "\t\\[ *[0-9]+\\][^\n]*" exported "${table}")
list(TRANSFORM exported REPLACE ".*\\] *" "")
list(SORT exported)
if(NOT exported)
  message(FATAL_ERROR "${LIBRARY} exports nothing")
endif()
