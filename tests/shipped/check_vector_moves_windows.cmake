# Fails when LIBRARY has no wide vectors, or moves one to or from memory by an
# instruction that wants it aligned: GCC takes the stack for aligned where
# Windows does not make it so. Needs OBJDUMP.
cmake_minimum_required(VERSION 3.25)

execute_process(
  COMMAND ${OBJDUMP} --disassemble --no-show-raw-insn ${LIBRARY}
  COMMAND grep -E "%[yz]mm" OUTPUT_VARIABLE wide)
if(NOT wide)
  message(FATAL_ERROR "${LIBRARY} has no vectors of 32 or 64 bytes")
endif()
string(REGEX MATCHALL "vmov(ap[sd]|dqa)[^\n]*\\([^\n]*" aligned "${wide}")
if(aligned)
  list(LENGTH aligned count)
  list(GET aligned 0 first)
  message(FATAL_ERROR "${LIBRARY} has ${count} aligned moves of wide vectors: ${first}")
endif()
