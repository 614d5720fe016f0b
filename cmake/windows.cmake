# Toolchain of the preset "windows": MinGW-w64 on Debian, for 64-bit Windows.
#
# The compilers that come with POSIX threads, by their full names: which of the
# two kinds the short names mean is up to the machine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# One runtime for all libraries and programs, so that an exception thrown in
# one is caught in another.
set(CMAKE_EXE_LINKER_FLAGS_INIT -shared-libgcc)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -shared-libgcc)

# Libraries are those for Windows, programs those of this machine.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Tests run under Wine.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/support/wine.sh)
