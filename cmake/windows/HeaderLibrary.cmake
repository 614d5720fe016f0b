# pxl_header_library(TARGET NAME...): an imported target for a library that is
# headers alone, found by the names of its files or folders in this machine's
# own /usr/include. That folder as a whole cannot be searched, since the C
# library of this machine lies in it too; so what is wanted is linked from a
# folder of its own. Called by the find module of the library, whose result it sets.
function(pxl_header_library target)
  set(${CMAKE_FIND_PACKAGE_NAME}_FOUND TRUE PARENT_SCOPE)
  if(TARGET ${target})
    return()
  endif()
  set(folder ${PROJECT_BINARY_DIR}/headers)
  foreach(name IN LISTS ARGN)
    if(NOT EXISTS /usr/include/${name})
      set(${CMAKE_FIND_PACKAGE_NAME}_FOUND FALSE PARENT_SCOPE)
      return()
    endif()
    file(MAKE_DIRECTORY ${folder})
    file(CREATE_LINK /usr/include/${name} ${folder}/${name} SYMBOLIC)
  endforeach()
  add_library(${target} INTERFACE IMPORTED GLOBAL)
  target_include_directories(${target} SYSTEM INTERFACE ${folder})
endfunction()
