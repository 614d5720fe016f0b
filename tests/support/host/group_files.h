// Files with the limits of process groups, below a folder of the test's own. K
// reads them as long as they exist.
#ifndef TESTS_SUPPORT_HOST_GROUP_FILES_H
#define TESTS_SUPPORT_HOST_GROUP_FILES_H

#include <filesystem>
#include <string>

class GroupFiles {
 public:
  // The process is in the group of that name: "/a/b", or "/" for the root.
  explicit GroupFiles(const std::string& ownGroup);
  GroupFiles(const GroupFiles&) = delete;
  GroupFiles& operator=(const GroupFiles&) = delete;
  // K reads the system's own files again.
  ~GroupFiles();

  // The text of proc/self/cgroup.
  void WriteMembership(const std::string& text) const;
  // A file of a group; the folders come with it.
  void Write(const std::string& group, const std::string& file, const std::string& text) const;
  void Write(const std::string& group, const std::string& file, std::uint64_t number) const;
  // Makes K read them; they take effect no sooner.
  void Read() const;

 private:
  std::filesystem::path root_;
};

#endif
