include(windows/HeaderLibrary)
pxl_header_library(tinyexr::tinyexr tinyexr.h)
