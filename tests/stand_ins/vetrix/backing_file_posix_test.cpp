// Tests of the two ways to make the file behind mapped memory.
#include "host/vetrix/files/backing_file_posix.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <system_error>

#include "tests/support/files/open_files.h"
#include "tests/support/system/variables.h"
#include "vetrix_host.h"

namespace {

using Opener = int (*)(const std::string&);

struct Way {
  const char* name;
  Opener open;
};

// Both ways of making a file have the same properties.
class BackingFile : public testing::TestWithParam<Way> {
 protected:
  BackingFile() : descriptor_(GetParam().open(folder_.Path())) {}
  ~BackingFile() override { close(descriptor_); }

  struct stat Status() const {
    struct stat status = {};
    EXPECT_EQ(fstat(descriptor_, &status), 0);
    return status;
  }

  TemporaryFolder folder_;
  int descriptor_;
};

TEST_P(BackingFile, HasNoName) {
  EXPECT_TRUE(folder_.IsEmpty());
  EXPECT_EQ(Status().st_nlink, 0U);
}

TEST_P(BackingFile, IsForItsUserAlone) {
  EXPECT_EQ(Status().st_mode & 0777U, 0600U);
}

TEST_P(BackingFile, IsClosedInOtherPrograms) {
  EXPECT_NE(fcntl(descriptor_, F_GETFD) & FD_CLOEXEC, 0);
}

TEST_P(BackingFile, HasItsSpaceReserved) {
  constexpr off_t kSize = 1 << 20;
  vetrix::ReserveSpace(descriptor_, kSize);
  EXPECT_EQ(Status().st_size, kSize);
  EXPECT_GE(Status().st_blocks * 512, kSize);
}

TEST_P(BackingFile, IsNotMadeInAFolderThatIsNotThere) {
  const std::set<int> before = OpenDescriptors();
  EXPECT_THROW(GetParam().open(folder_.Path() + "/nowhere"), std::system_error);
  EXPECT_EQ(OpenDescriptors(), before);
}

[[noreturn]] void DieWithAFile(Opener opener, const std::string& folder) {
  vetrix::ReserveSpace(opener(folder), 1000);
  std::raise(SIGKILL);
  std::_Exit(0);
}

TEST_P(BackingFile, IsGoneWithAProcessThatIsKilled) {
  EXPECT_EXIT(DieWithAFile(GetParam().open, folder_.Path()), testing::KilledBySignal(SIGKILL), "");
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_P(BackingFile, IsNeverTheSameTwice) {
  const int other = GetParam().open(folder_.Path());
  struct stat status = {};
  ASSERT_EQ(fstat(other, &status), 0);
  EXPECT_NE(status.st_ino, Status().st_ino);
  close(other);
}

INSTANTIATE_TEST_SUITE_P(Ways, BackingFile,
                         testing::Values(Way{"Chosen", vetrix::OpenBackingFile},
                                         Way{"Unnamed", vetrix::OpenUnnamedFile},
                                         Way{"Unlinked", vetrix::OpenAndUnlinkFile}),
                         [](const auto& tested) { return tested.param.name; });

TEST(MappedFolder, IsTheFirstThatIsNamed) {
  const ScopedVariable temporary("TMPDIR", "/second");
  {
    const ScopedVariable mapped("VETRIX_MAPPED_DIR", "/first");
    EXPECT_EQ(vetrix::host::FindMappedFolder().path, "/first");
    EXPECT_EQ(vetrix::host::FindMappedFolder().variable, "VETRIX_MAPPED_DIR");
  }
  EXPECT_EQ(vetrix::host::FindMappedFolder().path, "/second");
  EXPECT_EQ(vetrix::host::FindMappedFolder().variable, "TMPDIR");
  const ScopedVariable empty("TMPDIR", "");
  EXPECT_EQ(vetrix::host::FindMappedFolder().path, "/var/tmp");
  EXPECT_EQ(vetrix::host::FindMappedFolder().variable, "");
}

}  // namespace
