# How everything here is compiled: language, warnings, folders.

set(CMAKE_C_STANDARD 11)
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_C_STANDARD_REQUIRED ON)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_C_EXTENSIONS OFF)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_C_VISIBILITY_PRESET hidden)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
# Programs search the libraries relative to their own folder, so that the build
# folder can be moved.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# Sources that end in the name of a system are built on that system alone.
if(WIN32)
  set(PXL_SYSTEM windows)
else()
  set(PXL_SYSTEM posix)
endif()

if(WIN32)
  # The libraries have no prefix in their names there.
  set(CMAKE_SHARED_LIBRARY_PREFIX "")
  include(windows/Runtime)
endif()

# Every target of the project links this. Whether a warning is an error is up to the
# preset: other compilers than the developers' may warn of more.
add_library(pxl_flags INTERFACE)
target_compile_options(pxl_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  # A contracted product would be rounded once where the formulas round twice.
  -ffp-contract=off)
# The root, for "world/build.h" and the like; include/ for "PXL.h".
target_include_directories(pxl_flags INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)

# Options for targets that need no speed but should compile quickly. The checks
# of the sanitizers take longest to optimise.
set(PXL_COMPILED_QUICKLY "$<$<CONFIG:Release>:-O1>" "$<$<CONFIG:RelWithDebInfo>:-O0>")

# The result of a build does not depend on its folder.
target_compile_options(pxl_flags INTERFACE
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${PROJECT_BINARY_DIR}/=)

# The shipped libraries stop at an overrun stack or a buffer that is too small,
# and have no memory that is both writable and executable. The sanitizers have
# checks of their own; on Windows the guards would need one more library, and the
# linker's defaults cover the rest.
if(NOT WIN32 AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  target_compile_options(pxl_flags INTERFACE
    -fstack-protector-strong $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  target_link_options(pxl_flags INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()

# A shared library names all libraries that it needs. Not under a sanitizer,
# whose runtime is part of the program.
function(pxl_refuse_undefined library)
  if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    target_link_options(${library} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

# Compiles the sources whose names end in a processor's level for that level.
# Called in the folder that defines the target.
function(pxl_raise_levels target)
  set(sse41 -mssse3 -msse4.1)
  set(avx2 -mavx2 -mfma)
  set(avx512 ${avx2} -mavx512f -mavx512bw -mavx512dq -mavx512vl)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 warns of the undefined vectors in its own header.
    list(APPEND avx512 -Wno-maybe-uninitialized)
  endif()
  if(MINGW)
    # GCC aligns the stack to 16 bytes on Windows, but spills wider vectors there
    # with aligned moves, unless it is patched as Debian's is.
    foreach(level IN ITEMS avx2 avx512)
      list(APPEND ${level} -Wa,-muse-unaligned-vector-move)
    endforeach()
  endif()
  get_target_property(sources ${target} SOURCES)
  foreach(source IN LISTS sources)
    if(source MATCHES "_(sse41|avx2|avx512)\\.cpp$")
      set_source_files_properties(${source} PROPERTIES COMPILE_OPTIONS "${${CMAKE_MATCH_1}}")
    endif()
  endforeach()
endfunction()
