include(windows/HeaderLibrary)
pxl_header_library(spdlog::spdlog_header_only spdlog fmt)
