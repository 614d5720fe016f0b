// What the process has open, and folders to open it in.
#ifndef TESTS_HOST_VETRIX_OPEN_FILES_H
#define TESTS_HOST_VETRIX_OPEN_FILES_H

#include <set>
#include <string>

// The open descriptors.
std::set<int> OpenDescriptors();
// The one descriptor that is open now and was not in `before`; -1 when there is
// none, or more than one.
int NewDescriptor(const std::set<int>& before);

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

// Sets a variable of the environment as long as it lives.
class ScopedVariable {
 public:
  ScopedVariable(const std::string& name, const std::string& value);
  ScopedVariable(const ScopedVariable&) = delete;
  ScopedVariable& operator=(const ScopedVariable&) = delete;
  ~ScopedVariable();

 private:
  std::string name_;
};

#endif
