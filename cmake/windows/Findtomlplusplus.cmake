include(windows/HeaderLibrary)
pxl_header_library(tomlplusplus::tomlplusplus toml++)
