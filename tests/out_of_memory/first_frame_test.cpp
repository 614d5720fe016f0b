// The steps that a process takes once: its first frame reads the settings, its
// first mapped file and its first surface find nothing kept. Each point of failure
// gets a process of its own.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "tests/out_of_memory/stage.h"
#include "tests/support/files/open_files.h"
#include "tests/support/memory/scarce_memory.h"
#include "tests/support/system/variables.h"

namespace {

constexpr Rect kSmall = {0, 0, 4, 10};

struct Making {
  const char* name;
  std::int32_t depth;
  std::uint32_t flags;
};

std::ostream& operator<<(std::ostream& stream, const Making& making) {
  return stream << making.name;
}

// The exit status of the process of one point.
enum Ending { kRanOut, kRanOutAsAnException, kNothingFailed, kWrong };

class FirstFrame : public ::testing::TestWithParam<Making> {
 protected:
  static Ending Live(FailingAllocations& injected);
  static Ending LiveApart(FailingAllocations& injected);
  static void TryAll(std::int64_t failures, bool mayThrow);
};

bool Works(PXL_WorldHandle worldH) {
  return PXL_LockPixels(0, worldH, nullptr) == PXL_Err_NONE &&
         PXL_ClearWorldToZeros(worldH) == PXL_Err_NONE &&
         (PXL_UnlockPixels(worldH), PXL_DisposeWorld(worldH) == PXL_Err_NONE);
}

// One birth, one World, and after a failure the World once more.
Ending FirstFrame::Live(FailingAllocations& injected) {
  PXL_Birth(0);
  const Rect rect = kSmall;
  const Making& making = GetParam();
  PXL_WorldHandle worldH = nullptr;
  const auto make = [&] {
    return PXL_NewWorld(nullptr, making.flags, &rect, making.depth, 0, nullptr, &worldH);
  };
  const Levels before = CurrentLevels();
  Ending ending = kNothingFailed;
  injected.Begin();
  try {
    const std::int32_t status = make();
    injected.End();
    if (status != PXL_Err_NONE) ending = kRanOut;
    if (status != PXL_Err_NONE && (worldH != nullptr || injected.Failures() == 0)) return kWrong;
    if (status == PXL_Err_NONE && !Works(worldH)) return kWrong;
    if (status == PXL_Err_NONE && injected.Failures() > 0) ending = kRanOut;  // and made up for it
  } catch (const std::bad_alloc&) {
    injected.End();
    ending = kRanOutAsAnException;
    if (worldH != nullptr) return kWrong;
  }
  if (make() != 0 || !Works(worldH)) return kWrong;
  EmptyCaches();
  return CurrentLevels() == before ? ending : kWrong;
}

Ending FirstFrame::LiveApart(FailingAllocations& injected) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    const KeptReports reports(kMostReports);
    _exit(Live(injected));
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
  return WIFEXITED(status) ? static_cast<Ending>(WEXITSTATUS(status)) : kWrong;
}

void FirstFrame::TryAll(std::int64_t failures, bool mayThrow) {
  int points = 0;
  int exceptions = 0;
  for (std::int64_t successes = 0;; ++successes) {
    SCOPED_TRACE(::testing::Message() << failures << " after " << successes);
    FailingAllocations injected(successes, failures);
    const Ending ending = LiveApart(injected);
    ASSERT_NE(ending, kWrong);
    if (ending == kNothingFailed) break;
    ++points;
    exceptions += ending == kRanOutAsAnException ? 1 : 0;
  }
  EXPECT_GT(points, 0);
  EXPECT_EQ(exceptions > 0, mayThrow);
  std::printf("%d points, %d to an exception\n", points, exceptions);
}

TEST_P(FirstFrame, MayFailAnywhere) {
  const TemporaryFolder folder;
  const std::string settings = folder.Path() + "/settings.toml";
  std::ofstream(settings) << "VirtualAllocFrames = true\nVirtualAllocMinSizeInK3 = 4\n";
  const ScopedVariable variable("VETRIX_SETTINGS", settings);
  // Only the settings are read with an exception for a failure.
  const bool readsSettings =
      (GetParam().flags & (PXL_Flag_NO_PLATFORM | PXL_Flag_DEFERRED)) == PXL_Flag_NO_PLATFORM;
  for (const std::int64_t failures : {std::int64_t{1}, std::int64_t{2}, scarce::kAll}) {
    TryAll(failures, readsSettings);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Of, FirstFrame,
    ::testing::Values(
        Making{.name = "AFrame", .depth = 64, .flags = PXL_Flag_NO_PLATFORM},
        Making{.name = "ASurface", .depth = 32, .flags = 0},
        Making{.name = "AMappedFile", .depth = 128, .flags = PXL_Flag_DEFERRED | PXL_Flag_MAPPED}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
