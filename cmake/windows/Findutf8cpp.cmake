# Its headers have a folder to themselves.
if(NOT TARGET utf8cpp)
  if(NOT EXISTS /usr/include/utf8cpp/utf8.h)
    message(FATAL_ERROR "/usr/include/utf8cpp is missing")
  endif()
  add_library(utf8cpp INTERFACE IMPORTED GLOBAL)
  target_include_directories(utf8cpp SYSTEM INTERFACE /usr/include/utf8cpp)
endif()
set(utf8cpp_FOUND TRUE)
