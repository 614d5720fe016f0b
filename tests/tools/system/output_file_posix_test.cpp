// Links, devices and the longest names.
#include <gmock/gmock.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cstring>

#include "tests/support/system/system_features.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/system/failure.h"
#include "tools/pxl/system/output_file.h"

using namespace pxl;
using testing::ElementsAre;
using testing::HasSubstr;

namespace fs = std::filesystem;

namespace {

std::string ReasonAgainst(const fs::path& path) {
  try {
    const OutputFile file(path);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "";
}

int CountEvents(int watch) {
  alignas(inotify_event) std::array<char, 4096> events{};
  const ssize_t size = read(watch, events.data(), events.size());
  int count = 0;
  for (ssize_t place = 0; place < size; ++count) {
    inotify_event event{};
    std::memcpy(&event, &events.at(static_cast<std::size_t>(place)), sizeof event);
    place += static_cast<ssize_t>(sizeof event + event.len);
  }
  return count;
}

}  // namespace

TEST(OutputFile, FollowsASymbolicLink) {
  const TemporaryFolder folder;
  WriteBytes(folder / "target", "old");
  fs::create_symlink("target", folder / "link.png");
  OutputFile file(folder / "link.png");
  file.stream() << "new";
  file.Commit();
  EXPECT_TRUE(fs::is_symlink(folder / "link.png"));
  EXPECT_EQ(ReadBytes(folder / "target"), "new");
}

// Between two times another user could put a link there.
TEST(OutputFile, IsOpenedByItsNameOnce) {
  const TemporaryFolder folder;
  const int watch = inotify_init1(IN_NONBLOCK);
  ASSERT_GE(inotify_add_watch(watch, folder.path().c_str(), IN_OPEN | IN_CLOSE), 0);
  const OutputFile file(folder / "a.png");
  EXPECT_EQ(CountEvents(watch), 1);
  close(watch);
}

TEST(OutputFile, IsNotWrittenThroughALinkThatTookItsPlace) {
  const TemporaryFolder folder;
  WriteBytes(folder / "victim", "untouched");
  {
    OutputFile file(folder / "a.png");
    const std::string temporary = folder.Names().front();
    ASSERT_NE(temporary, "victim");
    fs::remove(folder / temporary);
    fs::create_symlink("victim", folder / temporary);
    file.stream() << "new";
    file.stream().flush();
  }
  EXPECT_EQ(ReadBytes(folder / "victim"), "untouched");
  EXPECT_THAT(folder.Names(), ElementsAre("victim"));
}

TEST(OutputFile, HasTheRightsOfTheUsersMask) {
  const TemporaryFolder folder;
  const mode_t before = umask(S_IRWXG | S_IRWXO);
  OutputFile(folder / "a.png").Commit();
  umask(before);
  EXPECT_EQ(fs::status(folder / "a.png").permissions(),
            fs::perms::owner_read | fs::perms::owner_write);
}

TEST(OutputFile, MayHaveTheLongestOfNames) {
  const TemporaryFolder folder;
  std::string name(251, 'n');
  name += ".png";
  OutputFile file(folder / name);
  file.Commit();
  EXPECT_THAT(folder.Names(), ElementsAre(name));
}

TEST(OutputFile, RefusesDevices) {
  EXPECT_EQ(ReasonAgainst("/dev/null"), "is not a regular file");
}

TEST(OutputFile, RefusesFoldersOfTheSystem) {
  if (!HasProcessFiles()) GTEST_SKIP() << "/proc is not mounted";
  EXPECT_THAT(ReasonAgainst("/proc/a.png"), HasSubstr("cannot write there"));
}
