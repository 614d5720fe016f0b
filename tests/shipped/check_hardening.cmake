# Fails unless FILE is hardened: its tables are read-only once they are bound, all
# of them are bound at the start, the stack cannot be executed, and no memory can
# be both written and executed. With GUARDED it must also call
# the checks of stack and buffers. Needs READELF.
cmake_minimum_required(VERSION 3.25)

function(read variable)
  execute_process(COMMAND ${READELF} --wide ${ARGN} ${FILE}
    OUTPUT_VARIABLE output COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "${output}" PARENT_SCOPE)
endfunction()

read(segments --segments)
read(dynamic --dynamic)
read(symbols --dyn-syms)

if(NOT segments MATCHES "GNU_RELRO")
  message(SEND_ERROR "${FILE}: its tables stay writable")
endif()
if(NOT dynamic MATCHES "BIND_NOW|Flags:[^\n]* NOW")
  message(SEND_ERROR "${FILE}: its tables are bound late, and writable until then")
endif()
if(NOT segments MATCHES "GNU_STACK[^\n]* RW +0x")
  message(SEND_ERROR "${FILE}: its stack can be executed")
endif()
if(segments MATCHES "LOAD[^\n]* RWE ")
  message(SEND_ERROR "${FILE}: memory can be written and executed")
endif()
if(GUARDED AND NOT symbols MATCHES "__stack_chk_fail")
  message(SEND_ERROR "${FILE}: no stack is guarded")
endif()
if(GUARDED AND NOT symbols MATCHES "__[a-z]+_chk")
  message(SEND_ERROR "${FILE}: no buffer is guarded")
endif()
