// Output files, complete or absent.
#include "tools/pxl/system/output_file.h"

#include <gmock/gmock.h>

#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/system/failure.h"

using namespace pxl;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace fs = std::filesystem;

namespace {

std::string ReasonAgainst(const fs::path& path) {
  try {
    const OutputFile file(path);
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.name(), path.string());
    return failure.what();
  }
  return "";
}

}  // namespace

TEST(OutputFile, AppearsWhenItIsCommitted) {
  const TemporaryFolder folder;
  OutputFile file(folder / "a.png");
  file.stream() << "content";
  EXPECT_FALSE(fs::exists(folder / "a.png"));
  file.Commit();
  EXPECT_EQ(ReadBytes(folder / "a.png"), "content");
  EXPECT_THAT(folder.Names(), ElementsAre("a.png"));
}

TEST(OutputFile, LeavesNothingWhenItIsNot) {
  const TemporaryFolder folder;
  OutputFile(folder / "a.png").stream() << "half";
  EXPECT_THAT(folder.Names(), IsEmpty());
}

TEST(OutputFile, ReplacesAFileOnlyAtTheEnd) {
  const TemporaryFolder folder;
  WriteBytes(folder / "a.png", "old");
  OutputFile(folder / "a.png").stream() << "half";
  EXPECT_EQ(ReadBytes(folder / "a.png"), "old");
  OutputFile file(folder / "a.png");
  file.stream() << "new";
  file.Commit();
  EXPECT_EQ(ReadBytes(folder / "a.png"), "new");
}

TEST(OutputFile, RefusesPlacesWhereItCannotBe) {
  const TemporaryFolder folder;
  EXPECT_THAT(ReasonAgainst(folder / "no" / "a.png"), HasSubstr("no such folder"));
  EXPECT_EQ(ReasonAgainst(folder.path()), "is a folder");
}
