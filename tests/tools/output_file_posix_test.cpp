// Links, devices and the longest names.
#include <gmock/gmock.h>

#include "tests/tools/temporary_folder.h"
#include "tools/pxl/failure.h"
#include "tools/pxl/output_file.h"

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

TEST(OutputFile, MayHaveTheLongestOfNames) {
  const TemporaryFolder folder;
  std::string name(251, 'n');
  name += ".png";
  OutputFile file(folder / name);
  file.Commit();
  EXPECT_THAT(folder.Names(), ElementsAre(name));
}

TEST(OutputFile, RefusesDevicesAndFoldersOfTheSystem) {
  EXPECT_EQ(ReasonAgainst("/dev/null"), "is not a regular file");
  EXPECT_THAT(ReasonAgainst("/proc/a.png"), HasSubstr("cannot write there"));
}
