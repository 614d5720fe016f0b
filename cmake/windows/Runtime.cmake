# The libraries of the compiler's runtime, beside the programs: Windows looks there
# first. They come without their debugging information, which is nine tenths of
# them. PXL_RUNTIME_FILES has their paths.
set(PXL_RUNTIME_FILES)
file(MAKE_DIRECTORY ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
foreach(name libgcc_s_seh-1.dll libstdc++-6.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}
    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  # The compiler gives the bare name back when it does not find the file.
  if(NOT IS_ABSOLUTE "${file}")
    message(FATAL_ERROR "${CMAKE_CXX_COMPILER} has no ${name}")
  endif()
  set(stripped ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/${name})
  if(NOT EXISTS ${stripped} OR ${file} IS_NEWER_THAN ${stripped})
    execute_process(COMMAND ${CMAKE_STRIP} -o ${stripped} ${file} COMMAND_ERROR_IS_FATAL ANY)
  endif()
  list(APPEND PXL_RUNTIME_FILES ${stripped})
endforeach()
