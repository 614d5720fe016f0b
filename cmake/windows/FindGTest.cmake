# GoogleTest, built from the sources that Debian ships.
if(NOT TARGET GTest::gtest AND EXISTS /usr/src/googletest)
  set(INSTALL_GTEST OFF)
  set(folder ${PROJECT_BINARY_DIR}/googletest)
  add_subdirectory(/usr/src/googletest ${folder} EXCLUDE_FROM_ALL SYSTEM)
endif()
if(TARGET GTest::gtest)
  set(GTest_FOUND TRUE)
endif()
