// The open descriptors of the process, and temporary folders.
#ifndef TESTS_SUPPORT_FILES_OPEN_FILES_H
#define TESTS_SUPPORT_FILES_OPEN_FILES_H

#include <cstddef>
#include <set>
#include <string>

// The open descriptors, or handles.
std::set<int> OpenDescriptors();
// How many of them a mapped file has.
extern const std::size_t kDescriptorsOfAFile;

// A folder of the test's own, gone with it.
class TemporaryFolder {
 public:
  TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  ~TemporaryFolder();
  const std::string& Path() const { return path_; }
  bool IsEmpty() const;

 private:
  std::string path_;
};

#endif
