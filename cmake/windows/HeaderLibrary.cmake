# pxl_header_library(TARGET NAME...): an imported target for a library that is
# headers alone, found by the names of its files or folders in this machine's
# own /usr/include. That folder as a whole cannot be searched, since the C
# library of this machine lies in it too; so what is wanted is linked from a
# folder of its own.
function(pxl_header_library target)
  if(TARGET ${target})
    return()
  endif()
  set(folder ${PROJECT_BINARY_DIR}/headers)
  foreach(name IN LISTS ARGN)
    if(NOT EXISTS /usr/include/${name})
      message(FATAL_ERROR "/usr/include/${name} is missing, which ${target} needs")
    endif()
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK /usr/include/${name} ${folder}/${name} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()
