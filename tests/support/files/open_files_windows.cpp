// Open handles and temporary folders.
#include <windows.h>

#include <filesystem>
#include <random>

#include "tests/support/files/open_files.h"

// The file and its section.
const std::size_t kDescriptorsOfAFile = 2;

// Handles are multiples of four, small ones first.
std::set<int> OpenDescriptors() {
  std::set<int> result;
  for (int number = 4; number < 4096; number += 4) {
    DWORD flags = 0;
    auto* handle = reinterpret_cast<HANDLE>(static_cast<std::intptr_t>(number));
    if (GetHandleInformation(handle, &flags) != 0) result.insert(number);
  }
  return result;
}

TemporaryFolder::TemporaryFolder()
    : path_((std::filesystem::temp_directory_path() /
             ("vetrix_test." + std::to_string(std::random_device{}())))
                .string()) {
  std::filesystem::create_directory(path_);
}
