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
# Programs find the libraries beside them, wherever the folder is moved to.
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)

# Sources that end in the name of a system hold what that system does in its own
# way; one of each is built.
if(WIN32)
  set(PXL_SYSTEM windows)
else()
  set(PXL_SYSTEM posix)
endif()

if(WIN32)
  # The libraries are known by their bare names.
  set(CMAKE_SHARED_LIBRARY_PREFIX "")
  include(windows/Runtime)
endif()

# Every target of the project links this.
add_library(pxl_flags INTERFACE)
target_compile_options(pxl_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  # A contracted product would be rounded once where the formulas round twice.
  -ffp-contract=off)
# The root, for "world/build.h" and the like; include/ for "PXL.h".
target_include_directories(pxl_flags INTERFACE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)

# For what needs no speed: options with which it is compiled quickly. The checks
# that the sanitizers add take longest to optimise.
set(PXL_COMPILED_QUICKLY "$<$<CONFIG:Release>:-O1>" "$<$<CONFIG:RelWithDebInfo>:-O0>")

# Builds do not depend on the folder that they are made in.
target_compile_options(pxl_flags INTERFACE
  -ffile-prefix-map=${PROJECT_SOURCE_DIR}/= -ffile-prefix-map=${PROJECT_BINARY_DIR}/=)

# What ships stops at an overrun stack or a buffer that is too small, and leaves
# no memory both writable and executable. The sanitizers have checks of their own;
# on Windows the guards would need one more library, and the linker does the rest.
if(NOT WIN32 AND NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
  target_compile_options(pxl_flags INTERFACE
    -fstack-protector-strong $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  target_link_options(pxl_flags INTERFACE -Wl,-z,relro,-z,now,-z,noexecstack)
endif()

# A shared library names all that it needs. Not under a sanitizer, whose
# runtime stands in the program.
function(pxl_refuse_undefined library)
  if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize")
    target_link_options(${library} PRIVATE -Wl,--no-undefined)
  endif()
endfunction()

# Sources whose names end in a level of processor are compiled for that level,
# and nothing else is. Called in the folder that made the target.
function(pxl_raise_levels target)
  set(sse41 -mssse3 -msse4.1)
  set(avx2 -mavx2 -mfma)
  set(avx512 ${avx2} -mavx512f -mavx512bw -mavx512dq -mavx512vl)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # GCC 12 takes the undefined vectors of its own header for a mistake.
    list(APPEND avx512 -Wno-maybe-uninitialized)
  endif()
  if(MINGW)
    # GCC keeps the stack of Windows at multiples of 16 and yet, unless it is
    # patched as Debian's is, spills wider vectors there with aligned moves.
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
