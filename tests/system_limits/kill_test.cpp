// Processes killed in the middle of their work with mapped files.
#include <gmock/gmock.h>
#include <sys/mman.h>
#include <sys/statvfs.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <random>

#include "tests/support/files/open_files.h"
#include "tests/support/files/small_volume.h"
#include "tests/support/system/variables.h"
#include "tests/system_limits/child.h"
#include "tests/system_limits/worlds.h"

namespace {

constexpr int kKills = 100;
constexpr useconds_t kLongestWork = 3000;
constexpr std::uint64_t kVolume = std::uint64_t{64} << 20;

// The progress of a worker, in memory that outlives it.
struct Progress {
  std::atomic<int> worlds{0};
  std::atomic<bool> busy{false};  // a World is there
  std::atomic<bool> wrong{false};
  std::atomic<bool> stop{false};
};

class SharedProgress {
 public:
  SharedProgress()
      : place_(mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS,
                    -1, 0)) {}
  SharedProgress(const SharedProgress&) = delete;
  SharedProgress& operator=(const SharedProgress&) = delete;
  ~SharedProgress() { munmap(place_, sizeof(Progress)); }

  Progress* operator->() const { return progress_; }
  Progress& operator*() const { return *progress_; }

 private:
  void* place_;
  Progress* progress_ = new (place_) Progress;
};

Rect AnyRect(std::mt19937& random) {
  std::uniform_int_distribution<int> side(1, 200);
  return {0, 0, static_cast<std::int16_t>(side(random)), static_cast<std::int16_t>(side(random))};
}

// Makes, fills, re-sizes and disposes of a World; whether all was as it should be.
bool WorkOnce(std::mt19937& random, Progress& progress) {
  constexpr std::int32_t kDepths[] = {PXL_Depth_32, PXL_Depth_64, PXL_Depth_128};
  const Rect first = AnyRect(random);
  const Rect second = AnyRect(random);
  PXL_WorldHandle world = nullptr;
  if (TryToMake(kDepths[random() % 3], first.right, first.bottom, kInMappedFile, world) !=
      PXL_Err_NONE) {
    return false;
  }
  progress.busy = true;
  const auto byte = static_cast<unsigned char>(random());
  bool good = Fill(world, byte) && Holds(world, byte);
  good = good && PXL_UpdateWorld(0, &second, 0, nullptr, world) == PXL_Err_NONE;
  good = good && Fill(world, static_cast<unsigned char>(~byte)) &&
         Holds(world, static_cast<unsigned char>(~byte));
  good = PXL_DisposeWorld(world) == PXL_Err_NONE && good;
  progress.busy = false;
  ++progress.worlds;
  return good;
}

int Work(unsigned seed, Progress& progress) {
  std::mt19937 random(seed);
  const LivingModule module;
  while (!progress.stop && !progress.wrong) {
    if (!WorkOnce(random, progress)) progress.wrong = true;
  }
  return testing::Test::HasFailure() || progress.wrong ? 1 : 0;
}

// Waits, within reason, until the worker has done so much or something is wrong.
void AwaitWorlds(const Progress& progress, int worlds) {
  constexpr int kLongestWait = 100000;
  for (int i = 0; i < kLongestWait && progress.worlds < worlds && !progress.wrong; ++i) usleep(100);
  EXPECT_GE(progress.worlds, worlds);
}

// Whether the kill met a World.
bool KillAfterSomeWork(unsigned seed, useconds_t microseconds) {
  const SharedProgress progress;
  const pid_t child = StartChild([&] { return Work(seed, *progress); });
  AwaitWorlds(*progress, 1);
  usleep(microseconds);
  kill(child, SIGKILL);
  const int status = WaitForChild(child);
  EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << status;
  EXPECT_FALSE(progress->wrong);
  return progress->busy;
}

std::uint64_t FreeBlocks(const std::string& folder) {
  struct statvfs status = {};
  EXPECT_EQ(statvfs(folder.c_str(), &status), 0);
  return status.f_bfree;
}

void ExpectNothingLeftByKills(const TemporaryFolder& folder) {
  std::mt19937 random(20260701);
  std::uniform_int_distribution<useconds_t> time(0, kLongestWork);
  const SharedProgress sibling;
  const pid_t child = StartChild([&] { return Work(1, *sibling); });
  int met = 0;
  for (unsigned i = 0; i < kKills; ++i) {
    if (KillAfterSomeWork(i, time(random))) ++met;
    EXPECT_TRUE(folder.IsEmpty());
  }
  EXPECT_GT(met, kKills / 3) << "too few kills in the middle of something";
  AwaitWorlds(*sibling, sibling->worlds + 10);
  sibling->stop = true;
  EXPECT_EQ(WaitForChild(child), 0);
  EXPECT_TRUE(folder.IsEmpty());
}

}  // namespace

TEST(Killing, LeavesNoFileAndDisturbsNoOther) {
  const TemporaryFolder folder;
  const ScopedVariable variable("VETRIX_MAPPED_DIR", folder.Path());
  ExpectInChild([&folder] {
    // On a volume of the test's own, its free space shows files without names.
    if (!CanMountVolumes()) return ExpectNothingLeftByKills(folder);
    ASSERT_TRUE(MountVolume(folder.Path(), Volume::Writable, kVolume));
    const std::uint64_t free = FreeBlocks(folder.Path());
    ExpectNothingLeftByKills(folder);
    EXPECT_EQ(FreeBlocks(folder.Path()), free);
  });
}
