# GoogleTest, built from the sources that Debian ships.
if(NOT TARGET GTest::gtest)
  set(INSTALL_GTEST OFF)
  set(folder ${PROJECT_BINARY_DIR}/googletest)
  block()
    # Warnings of other projects are not ours to mend.
    set(CMAKE_COMPILE_WARNING_AS_ERROR OFF)
    add_subdirectory(/usr/src/googletest ${folder} EXCLUDE_FROM_ALL SYSTEM)
  endblock()
endif()
set(GTest_FOUND TRUE)
set(GTEST_FOUND TRUE)
