include(windows/HeaderLibrary)
pxl_header_library(stb::stb stb)
