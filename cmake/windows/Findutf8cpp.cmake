# Its headers have a folder to themselves.
if(NOT TARGET utf8cpp::utf8cpp AND EXISTS /usr/include/utf8cpp/utf8.h)
  add_library(utf8cpp::utf8cpp INTERFACE IMPORTED GLOBAL)
  target_include_directories(utf8cpp::utf8cpp SYSTEM INTERFACE /usr/include/utf8cpp)
endif()
if(TARGET utf8cpp::utf8cpp)
  set(utf8cpp_FOUND TRUE)
endif()
