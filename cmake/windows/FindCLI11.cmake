include(windows/HeaderLibrary)
pxl_header_library(CLI11::CLI11 CLI)
