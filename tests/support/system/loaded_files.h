// Where the libraries of this process were loaded from.
#ifndef TESTS_SUPPORT_SYSTEM_LOADED_FILES_H
#define TESTS_SUPPORT_SYSTEM_LOADED_FILES_H

#include <filesystem>
#include <vector>

std::vector<std::filesystem::path> LoadedFiles();

#endif
