# Fails if LIBRARY calls more of the C library than memory and texts in memory: no
# file, variable, program, thread or connection.
# Needs NM.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${NM} --dynamic --undefined-only ${LIBRARY}
  OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "[A-Za-z0-9_]+@GLIBC_" calls "${symbols}")
list(TRANSFORM calls REPLACE "@GLIBC_$" "")
if(NOT "malloc" IN_LIST calls)
  message(FATAL_ERROR "${LIBRARY} calls no malloc, so that this check cannot tell: ${calls}")
endif()

set(memory "mem[a-z]+|malloc|calloc|realloc|aligned_alloc|free|bcmp")
set(texts "str[a-z]+|v?snprintf")
set(runtime "abort|stack_chk_fail|cxa_[a-z_]+|tls_get_addr|errno_location")
list(FILTER calls EXCLUDE REGEX "^_*(${memory}|${texts}|${runtime})(_chk)?$")
if(calls)
  message(FATAL_ERROR "${LIBRARY} also calls ${calls}")
endif()
