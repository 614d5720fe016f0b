// Open descriptors and temporary folders.
#include <fcntl.h>

#include <cstdlib>
#include <stdexcept>

#include "tests/support/files/open_files.h"

const std::size_t kDescriptorsOfAFile = 1;

std::set<int> OpenDescriptors() {
  std::set<int> result;
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) result.insert(descriptor);
  }
  return result;
}

TemporaryFolder::TemporaryFolder() : path_("/var/tmp/vetrix_test.XXXXXX") {
  if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
}
