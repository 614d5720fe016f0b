include(windows/HeaderLibrary)
pxl_header_library(nlohmann_json::nlohmann_json nlohmann)
