# GoogleTest, built from the sources that Debian ships.
if(NOT TARGET GTest::gtest AND EXISTS /usr/src/googletest)
  set(INSTALL_GTEST OFF)
  set(folder ${PROJECT_BINARY_DIR}/googletest)
  block()
    # Warnings of other projects are not ours to mend.
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    add_subdirectory(/usr/src/googletest ${folder} EXCLUDE_FROM_ALL SYSTEM)
  endblock()
endif()
if(TARGET GTest::gtest)
  set(GTest_FOUND TRUE)
endif()
