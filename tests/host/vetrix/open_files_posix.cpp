#include <fcntl.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "open_files.h"

std::set<int> OpenDescriptors() {
  std::set<int> result;
  for (int descriptor = 0; descriptor < 1024; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) >= 0) result.insert(descriptor);
  }
  return result;
}

int NewDescriptor(const std::set<int>& before) {
  std::vector<int> added;
  for (const int descriptor : OpenDescriptors()) {
    if (!before.contains(descriptor)) added.push_back(descriptor);
  }
  return added.size() == 1 ? added.front() : -1;
}

TemporaryFolder::TemporaryFolder() : path_("/var/tmp/vetrix_test.XXXXXX") {
  if (mkdtemp(path_.data()) == nullptr) throw std::runtime_error("no temporary folder");
}

TemporaryFolder::~TemporaryFolder() {
  std::filesystem::remove_all(path_);
}

bool TemporaryFolder::IsEmpty() const {
  return std::filesystem::is_empty(path_);
}

ScopedVariable::ScopedVariable(const std::string& name, const std::string& value) : name_(name) {
  setenv(name.c_str(), value.c_str(), 1);
}

ScopedVariable::~ScopedVariable() {
  unsetenv(name_.c_str());
}
