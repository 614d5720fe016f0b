// Tests of mapped files that need files without names, limits and signals.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/statfs.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>

#include "tests/stand_ins/vetrix/mapped_file_fixture.h"
#include "tests/support/files/small_volume.h"
#include "tests/support/system/sanitizers.h"

namespace {

using vetrix::MemoryMappedFile;

TEST_F(MappedFile, LeavesNoNameInItsFolder) {
  for (const std::string& name : {std::string("a"), folder_.Path() + "/known"}) {
    MemoryMappedFile file;
    file.Init(name, kSize, kMode);
    file.GetAddress();
    EXPECT_TRUE(folder_.IsEmpty());
  }
}

TEST_F(MappedFile, CannotBeMadeInAFolderThatIsNotThere) {
  const std::string folder = folder_.Path() + "/nowhere";
  {
    const ScopedVariable nowhere("VETRIX_MAPPED_DIR", folder);
    EXPECT_EQ(ProblemOf(file_, "a", kSize),
              "cannot make a file in " + folder + ": No such file or directory");
    EXPECT_EQ(file_.Size(), 0U);
  }
  const ScopedVariable device("VETRIX_MAPPED_DIR", "/dev/null");
  EXPECT_EQ(ProblemOf(file_, "a", kSize), "cannot make a file in /dev/null: Not a directory");
}

// A file system in memory of a known size that refuses at once what exceeds it.
std::uint64_t SizeOfMemoryDisk(const char* folder) {
  constexpr long kMemoryDisk = 0x01021994;
  struct statfs status = {};
  if (statfs(folder, &status) != 0 || status.f_type != kMemoryDisk) return 0;
  return static_cast<std::uint64_t>(status.f_blocks) * static_cast<std::uint64_t>(status.f_bsize);
}

TEST_F(MappedFile, FailsWhenTheDiskCannotHoldIt) {
  const std::uint64_t size = SizeOfMemoryDisk("/dev/shm");
  if (size == 0) GTEST_SKIP() << "/dev/shm is no memory disk of a known size";
  const ScopedVariable full("VETRIX_MAPPED_DIR", "/dev/shm");
  EXPECT_THROW(file_.Init("a", size + 4096, kMode), std::runtime_error);
}

// Returns 0 when the file could be made and mapped, 1 after a runtime_error, which
// is printed on standard error.
int TryToMap(std::uint64_t size) {
  try {
    MemoryMappedFile file;
    file.Init("a", size, kMode);
    file.GetAddress();
    return 0;
  } catch (const std::runtime_error& problem) {
    std::fprintf(stderr, "%s\n", problem.what());
    return 1;
  }
}

void Limit(__rlimit_resource resource, rlim_t bytes) {
  rlimit limit{};
  getrlimit(resource, &limit);
  limit.rlim_cur = bytes;
  setrlimit(resource, &limit);
}

// A limit stays until the process ends, so each case has its own.
using MappedFileDeathTest = MappedFile;

[[noreturn]] void ExitAfterMappingUnderFileLimit(std::uint64_t size, rlim_t limit) {
  std::signal(SIGXFSZ, SIG_DFL);
  Limit(RLIMIT_FSIZE, limit);
  std::_Exit(TryToMap(size));
}

TEST_F(MappedFileDeathTest, ThrowsAtAFileSizeLimitAndTakesNoSignal) {
  EXPECT_EXIT(ExitAfterMappingUnderFileLimit(kSize, kSize - 1), testing::ExitedWithCode(1),
              "100001 bytes exceed the limit on file sizes: File too large");
  EXPECT_EXIT(ExitAfterMappingUnderFileLimit(kSize, kSize), testing::ExitedWithCode(0), "");
}

[[noreturn]] void ExitAfterMappingUnderAddressLimit() {
  MemoryMappedFile file;
  file.Init("a", kSize, kMode);
  Limit(RLIMIT_AS, 1);
  try {
    file.GetAddress();
  } catch (const std::runtime_error&) {
    Limit(RLIMIT_AS, RLIM_INFINITY);
    std::_Exit(file.GetAddress() != nullptr && file.Size() == kSize ? 1 : 2);
  }
  std::_Exit(0);
}

TEST_F(MappedFileDeathTest, ThrowsWhenItCannotBeMappedAndCanBeTriedAgain) {
  if (kAddressSanitizer || kThreadSanitizer) GTEST_SKIP() << "the checker needs address space";
  EXPECT_EXIT(ExitAfterMappingUnderAddressLimit(), testing::ExitedWithCode(1), "");
}

[[noreturn]] void ExitAfterMappingWithoutDescriptors() {
  Limit(RLIMIT_NOFILE, 0);
  std::_Exit(TryToMap(kSize));
}

TEST_F(MappedFileDeathTest, ThrowsWhenNoDescriptorIsLeft) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker needs descriptors";
  EXPECT_EXIT(ExitAfterMappingWithoutDescriptors(), testing::ExitedWithCode(1),
              "cannot make a file in .*: Too many open files");
}

// The file must be deleted with the process also after a crash.
[[noreturn]] void CrashWithAFile() {
  MemoryMappedFile file;
  file.Init("a", kSize, kMode);
  file.GetAddress();
  std::raise(SIGKILL);
  std::_Exit(0);
}

TEST_F(MappedFileDeathTest, LeavesNothingBehindAfterACrash) {
  EXPECT_EXIT(CrashWithAFile(), testing::KilledBySignal(SIGKILL), "");
  EXPECT_TRUE(folder_.IsEmpty());
}

// Fills a file while another process has one of the same name.
[[noreturn]] void ExitAfterWritingToTheSameName() {
  MemoryMappedFile file;
  file.Init("same", kSize, kMode);
  auto* bytes = static_cast<char*>(file.GetAddress());
  const bool foreign = std::string(bytes, kSize) != std::string(kSize, '\0');
  std::memset(bytes, 2, kSize);
  std::_Exit(foreign ? 1 : 0);
}

TEST_F(MappedFileDeathTest, NeverMeetsThatOfAnotherProcess) {
  file_.Init("same", kSize, kMode);
  std::memset(file_.GetAddress(), 1, kSize);
  EXPECT_EXIT(ExitAfterWritingToTheSameName(), testing::ExitedWithCode(0), "");
  const auto* bytes = static_cast<const char*>(file_.GetAddress());
  EXPECT_EQ(std::string(bytes, kSize), std::string(kSize, '\x01'));
}

// ---- Volumes made by the test -----------------------------------------------

constexpr std::uint64_t kVolume = 1 << 20;

class SmallVolumeDeathTest : public MappedFile {
 protected:
  void SetUp() override {
    if (!CanMountVolumes()) GTEST_SKIP() << "no volume can be mounted here";
  }
};

[[noreturn]] void ExitAfterMapping(const std::string& folder, Volume volume, std::uint64_t size) {
  if (!MountVolume(folder, volume, kVolume)) std::_Exit(2);
  std::_Exit(TryToMap(size));
}

TEST_F(SmallVolumeDeathTest, IsFullAsAnException) {
  const std::string& folder = folder_.Path();
  EXPECT_EXIT(ExitAfterMapping(folder, Volume::Writable, kVolume), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(ExitAfterMapping(folder, Volume::Writable, kVolume + 1), testing::ExitedWithCode(1),
              "cannot reserve 1048577 bytes for a mapped file: No space left on device");
}

TEST_F(SmallVolumeDeathTest, IsReadOnlyAsAnException) {
  EXPECT_EXIT(ExitAfterMapping(folder_.Path(), Volume::ReadOnly, kSize), testing::ExitedWithCode(1),
              "cannot make a file in .*: Read-only file system");
}

// Returns 0 when two files take half of the volume each and a third one fails.
int FillVolumeAndWrite() {
  MemoryMappedFile first;
  MemoryMappedFile second;
  MemoryMappedFile third;
  const std::uint64_t half = kVolume / 2;
  if (!ProblemOf(first, "a", half).empty() || !ProblemOf(second, "b", half).empty()) return 3;
  if (ProblemOf(third, "c", 1).empty()) return 4;
  std::memset(first.GetAddress(), 1, half);
  std::memset(second.GetAddress(), 2, half);
  first.Reset();
  return ProblemOf(third, "c", half).empty() ? 0 : 5;
}

[[noreturn]] void ExitAfterFilling(const std::string& folder) {
  if (!MountVolume(folder, Volume::Writable, kVolume)) std::_Exit(2);
  std::_Exit(FillVolumeAndWrite());
}

TEST_F(SmallVolumeDeathTest, IsNeverTooFullForWhatItHasPromised) {
  EXPECT_EXIT(ExitAfterFilling(folder_.Path()), testing::ExitedWithCode(0), "");
}

// Returns 0 when a failed file has released its part of the space.
int FailAndUseAll() {
  MemoryMappedFile file;
  for (int i = 0; i < 3; ++i) {
    if (ProblemOf(file, "a", 2 * kVolume).empty()) return 3;
  }
  return ProblemOf(file, "a", kVolume).empty() ? 0 : 4;
}

[[noreturn]] void ExitAfterFailing(const std::string& folder) {
  if (!MountVolume(folder, Volume::Writable, kVolume)) std::_Exit(2);
  std::_Exit(FailAndUseAll());
}

TEST_F(SmallVolumeDeathTest, GetsBackWhatAFailureTook) {
  EXPECT_EXIT(ExitAfterFailing(folder_.Path()), testing::ExitedWithCode(0), "");
}

}  // namespace
