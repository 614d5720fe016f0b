// Writes the files of process groups.
#include "tests/support/host/group_files.h"

#include <gtest/gtest.h>

#include <fstream>

#include "K_host.h"

namespace {

// The test's name makes the folder its own when several run side by side.
std::filesystem::path NewFolder() {
  const auto* test = testing::UnitTest::GetInstance()->current_test_info();
  auto folder = std::filesystem::path(testing::TempDir()) /
                (std::string("K_group_files.") + test->test_suite_name() + "." + test->name());
  std::filesystem::remove_all(folder);
  return folder;
}

void WriteFile(const std::filesystem::path& path, const std::string& text) {
  std::filesystem::create_directories(path.parent_path());
  std::ofstream(path) << text;
}

}  // namespace

GroupFiles::GroupFiles(const std::string& ownGroup) : root_(NewFolder()) {
  WriteMembership("0::" + ownGroup + "\n");
}

GroupFiles::~GroupFiles() {
  std::filesystem::remove_all(root_);
  K_ReadMemoryGroup(nullptr);
}

void GroupFiles::WriteMembership(const std::string& text) const {
  WriteFile(root_ / "proc/self/cgroup", text);
}

void GroupFiles::Write(const std::string& group, const std::string& file,
                       const std::string& text) const {
  WriteFile(root_ / ("sys/fs/cgroup" + group) / file, text + "\n");
}

void GroupFiles::Write(const std::string& group, const std::string& file,
                       std::uint64_t number) const {
  Write(group, file, std::to_string(number));
}

void GroupFiles::Read() const {
  EXPECT_EQ(K_ReadMemoryGroup(root_.string().c_str()), 1);
}
