# Fails unless LIBRARY needs all of IMPORTS and beyond them only the system and
# the language's runtime. Needs OBJDUMP.
cmake_minimum_required(VERSION 3.25)

execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY}
  OUTPUT_VARIABLE description COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "DLL Name: [^\n]*" needed "${description}")
list(TRANSFORM needed REPLACE "DLL Name: " "")
foreach(import IN LISTS IMPORTS)
  if(NOT import IN_LIST needed)
    message(FATAL_ERROR "${LIBRARY} does not need ${import}")
  endif()
endforeach()

list(REMOVE_ITEM needed ${IMPORTS} KERNEL32.dll msvcrt.dll libstdc++-6.dll
  libgcc_s_seh-1.dll libwinpthread-1.dll)
if(needed)
  message(FATAL_ERROR "${LIBRARY} also needs ${needed}")
endif()
