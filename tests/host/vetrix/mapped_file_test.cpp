#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/statfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstring>
#include <stdexcept>
#include <string>
#include <vector>

#include "open_files.h"
#include "platform/vetrix.h"
#include "small_volume.h"
#include "tests/host/sanitizers.h"

namespace {

using vetrix::MemoryMappedFile;

constexpr std::uint64_t kSize = 100001;
constexpr std::uint32_t kMode = 101;

// Makes its files in a folder of its own.
class MappedFile : public testing::Test {
 protected:
  TemporaryFolder folder_;
  ScopedVariable variable_{"VETRIX_MAPPED_DIR", folder_.Path()};
  MemoryMappedFile file_;
};

TEST_F(MappedFile, IsEmptyUntilItIsInitialised) {
  EXPECT_EQ(file_.Size(), 0U);
  EXPECT_THROW(file_.GetAddress(), std::runtime_error);
  file_.UnmapMemory();
  file_.CloseFileHandleIfPossible();
  file_.Reset();
}

TEST_F(MappedFile, HasTheSizeAskedForAndZeros) {
  file_.Init("a", kSize, kMode);
  EXPECT_EQ(file_.Size(), kSize);
  const auto* bytes = static_cast<const char*>(file_.GetAddress());
  EXPECT_EQ(std::string(bytes, kSize), std::string(kSize, '\0'));
}

TEST_F(MappedFile, StaysAtItsAddressWhileMapped) {
  file_.Init("a", kSize, kMode);
  void* address = file_.GetAddress();
  ASSERT_NE(address, nullptr);
  EXPECT_EQ(file_.GetAddress(), address);
}

TEST_F(MappedFile, KeepsItsContentWhileUnmapped) {
  file_.Init("a", kSize, kMode);
  std::memset(file_.GetAddress(), 0x5A, kSize);
  file_.UnmapMemory();
  file_.CloseFileHandleIfPossible();
  const auto* bytes = static_cast<const char*>(file_.GetAddress());
  EXPECT_EQ(std::string(bytes, kSize), std::string(kSize, '\x5A'));
}

bool IsMapped(void* address) {
  unsigned char residency = 0;
  const auto page = reinterpret_cast<std::uintptr_t>(address) & ~std::uintptr_t{4095};
  return mincore(reinterpret_cast<void*>(page), 1, &residency) == 0;
}

TEST_F(MappedFile, TakesNoAddressSpaceWhileUnmapped) {
  file_.Init("a", kSize, kMode);
  void* address = file_.GetAddress();
  EXPECT_TRUE(IsMapped(address));
  file_.UnmapMemory();
  EXPECT_FALSE(IsMapped(address));
  file_.UnmapMemory();
}

TEST_F(MappedFile, IsNotAnotherOfTheSameName) {
  MemoryMappedFile other;
  file_.Init("same", kSize, kMode);
  other.Init("same", kSize, kMode);
  std::memset(file_.GetAddress(), 1, kSize);
  std::memset(other.GetAddress(), 2, kSize);
  EXPECT_EQ(*static_cast<char*>(file_.GetAddress()), 1);
  EXPECT_EQ(*static_cast<char*>(other.GetAddress()), 2);
}

TEST_F(MappedFile, TakesAnyName) {
  EXPECT_NO_THROW(file_.Init("../../no/such/folder", kSize, kMode));
}

TEST_F(MappedFile, LeavesNoNameInItsFolder) {
  file_.Init("a", kSize, kMode);
  file_.GetAddress();
  EXPECT_TRUE(folder_.IsEmpty());
}

TEST_F(MappedFile, GivesItsDescriptorBack) {
  const std::set<int> before = OpenDescriptors();
  file_.Init("a", kSize, kMode);
  file_.GetAddress();
  EXPECT_NE(NewDescriptor(before), -1);
  file_.Reset();
  EXPECT_EQ(OpenDescriptors(), before);
  {
    MemoryMappedFile other;
    other.Init("b", kSize, kMode);
  }
  EXPECT_EQ(OpenDescriptors(), before);
}

TEST_F(MappedFile, IsEmptyAgainAfterAReset) {
  file_.Init("a", kSize, kMode);
  void* address = file_.GetAddress();
  std::memset(address, 1, kSize);
  file_.Reset();
  EXPECT_FALSE(IsMapped(address));
  EXPECT_EQ(file_.Size(), 0U);
  EXPECT_THROW(file_.GetAddress(), std::runtime_error);
  file_.Init("a", kSize, kMode);
  EXPECT_EQ(*static_cast<char*>(file_.GetAddress()), 0);
}

TEST_F(MappedFile, IsNotInitialisedTwice) {
  file_.Init("a", kSize, kMode);
  EXPECT_THROW(file_.Init("b", 2 * kSize, kMode), std::runtime_error);
  EXPECT_EQ(file_.Size(), kSize);
}

TEST_F(MappedFile, CannotBeEmptyOrBeyondAllFiles) {
  const std::set<int> before = OpenDescriptors();
  EXPECT_THROW(file_.Init("a", 0, kMode), std::runtime_error);
  EXPECT_THROW(file_.Init("a", ~std::uint64_t{0}, kMode), std::runtime_error);
  EXPECT_THROW(file_.Init("a", std::uint64_t{1} << 62, kMode), std::runtime_error);
  EXPECT_EQ(OpenDescriptors(), before);
  EXPECT_NO_THROW(file_.Init("a", kSize, kMode));
}

// What an initialisation throws; empty when it succeeds.
std::string ProblemOf(MemoryMappedFile& file, const std::string& name, std::uint64_t size) {
  try {
    file.Init(name, size, kMode);
    return "";
  } catch (const std::runtime_error& problem) {
    return problem.what();
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

TEST_F(MappedFile, SaysThatTheSizeIsWrong) {
  EXPECT_EQ(ProblemOf(file_, "a", 0), "no bytes to map for 'a': Invalid argument");
  EXPECT_EQ(ProblemOf(file_, "a", ~std::uint64_t{0}),
            "18446744073709551615 bytes are over the limit for files: File too large");
}

TEST_F(MappedFile, TakesHostileNamesAsLabels) {
  const std::vector<std::string> names = {"",
                                          "/",
                                          "..",
                                          "a/b\n\x1B[2J\xFF",
                                          "%s%n",
                                          std::string("a\0b", 3),
                                          std::string(100000, 'x'),
                                          folder_.Path() + "/known"};
  for (const std::string& name : names) {
    MemoryMappedFile file;
    EXPECT_EQ(ProblemOf(file, name, kSize), "");
    *static_cast<char*>(file.GetAddress()) = 1;
    EXPECT_TRUE(folder_.IsEmpty());
  }
}

TEST_F(MappedFile, KeepsHostileNamesOutOfItsMessages) {
  EXPECT_EQ(ProblemOf(file_, std::string("a\n\x1B[2J\0%s", 9), 0),
            "no bytes to map for 'a??[2J?%s': Invalid argument");
  EXPECT_EQ(ProblemOf(file_, std::string(100000, 'x'), 0),
            "no bytes to map for '" + std::string(80, 'x') + "...': Invalid argument");
}

// A file system in memory whose size is known and which refuses at once what it
// could never hold.
std::uint64_t SizeOfMemoryDisk(const char* folder) {
  constexpr long kMemoryDisk = 0x01021994;
  struct statfs status {};
  if (statfs(folder, &status) != 0 || status.f_type != kMemoryDisk) return 0;
  return static_cast<std::uint64_t>(status.f_blocks) * static_cast<std::uint64_t>(status.f_bsize);
}

TEST_F(MappedFile, FailsWhenTheDiskCannotHoldIt) {
  const std::uint64_t size = SizeOfMemoryDisk("/dev/shm");
  if (size == 0) GTEST_SKIP() << "/dev/shm is no memory disk of a known size";
  const ScopedVariable full("VETRIX_MAPPED_DIR", "/dev/shm");
  EXPECT_THROW(file_.Init("a", size + 4096, kMode), std::runtime_error);
}

// 0 when the file could be made and mapped, 1 after a runtime_error, which is
// told on standard error.
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

// Limits last as long as the process.
using MappedFileDeathTest = MappedFile;

[[noreturn]] void ExitAfterMappingUnderFileLimit(std::uint64_t size, rlim_t limit) {
  std::signal(SIGXFSZ, SIG_DFL);
  Limit(RLIMIT_FSIZE, limit);
  std::_Exit(TryToMap(size));
}

TEST_F(MappedFileDeathTest, ThrowsAtAFileSizeLimitAndTakesNoSignal) {
  EXPECT_EXIT(ExitAfterMappingUnderFileLimit(kSize, kSize - 1), testing::ExitedWithCode(1),
              "100001 bytes are over the limit for files: File too large");
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

// The file must be gone with the process even when that ends by a crash.
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

// Fills a file of the same name as another process's while that holds its own.
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

// ---- Volumes of the test's own ----------------------------------------------

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

// 0 when both halves of the volume go to files and a third file gets nothing.
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

// 0 when what failed has given its part of the space back.
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
