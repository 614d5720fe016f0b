# The libraries of the compiler's runtime, copied beside the programs: Windows
# looks there first. PXL_RUNTIME_FILES has their paths.
set(PXL_RUNTIME_FILES)
foreach(name libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  # The compiler gives the bare name back when it does not find the file.
  if(NOT IS_ABSOLUTE "${file}")
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${name}")
  endif()
  file(REAL_PATH ${file} file)
  list(APPEND PXL_RUNTIME_FILES ${file})
endforeach()
file(COPY ${PXL_RUNTIME_FILES} DESTINATION ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
