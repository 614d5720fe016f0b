// Temporary folders.
#include "tests/support/files/open_files.h"

#include <filesystem>

TemporaryFolder::~TemporaryFolder() {
  std::filesystem::remove_all(path_);
}

bool TemporaryFolder::IsEmpty() const {
  return std::filesystem::is_empty(path_);
}
