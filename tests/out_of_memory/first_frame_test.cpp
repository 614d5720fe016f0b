// What a process does once: its first frame reads the settings, its first mapped
// file and its first surface find nothing kept. Each point of failure gets a
// process of its own.
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>

#include "tests/out_of_memory/scarce_memory.h"
#include "tests/out_of_memory/stage.h"
#include "tests/support/files/open_files.h"
#include "tests/support/system/variables.h"

namespace {

constexpr Rect SMALL = {0, 0, 4, 10};

struct Making {
  const char* name;
  std::int32_t depth;
  std::uint32_t flags;
};

std::ostream& operator<<(std::ostream& stream, const Making& making) {
  return stream << making.name;
}

// What the process of one point ends with.
enum Ending { RAN_OUT, RAN_OUT_AS_AN_EXCEPTION, NOTHING_FAILED, WRONG };

class FirstFrame : public ::testing::TestWithParam<Making> {
 protected:
  static Ending Live(Trouble& lack);
  static Ending LiveApart(Trouble& lack);
  static void TryAll(std::int64_t failures, bool mayThrow);
};

bool Works(PXL_WorldHandle worldH) {
  return PXL_LockPixels(0, worldH, nullptr) == 0 && PXL_ClearWorldToZeros(worldH) == 0 &&
         (PXL_UnlockPixels(worldH), PXL_DisposeWorld(worldH) == 0);
}

// One birth, one World, and after a failure the World once more.
Ending FirstFrame::Live(Trouble& lack) {
  PXL_Birth(0);
  const Rect rect = SMALL;
  const Making& making = GetParam();
  PXL_WorldHandle worldH = nullptr;
  const auto make = [&] {
    return PXL_NewWorld(nullptr, making.flags, &rect, making.depth, 0, nullptr, &worldH);
  };
  const Levels before = CurrentLevels();
  Ending ending = NOTHING_FAILED;
  lack.Begin();
  try {
    const std::int32_t status = make();
    lack.End();
    if (status != 0) ending = RAN_OUT;
    if (status != 0 && (worldH != nullptr || lack.Failures() == 0)) return WRONG;
    if (status == 0 && !Works(worldH)) return WRONG;
    if (status == 0 && lack.Failures() > 0) ending = RAN_OUT;  // and made up for it
  } catch (const std::bad_alloc&) {
    lack.End();
    ending = RAN_OUT_AS_AN_EXCEPTION;
    if (worldH != nullptr) return WRONG;
  }
  if (make() != 0 || !Works(worldH)) return WRONG;
  EmptyCaches();
  return CurrentLevels() == before ? ending : WRONG;
}

Ending FirstFrame::LiveApart(Trouble& lack) {
  std::fflush(nullptr);
  const pid_t child = fork();
  if (child == 0) {
    K_SetReportSink([](const K_Report*, void*) {}, nullptr);
    _exit(Live(lack));
  }
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
  return WIFEXITED(status) ? static_cast<Ending>(WEXITSTATUS(status)) : WRONG;
}

void FirstFrame::TryAll(std::int64_t failures, bool mayThrow) {
  int points = 0;
  int exceptions = 0;
  for (std::int64_t successes = 0;; ++successes) {
    SCOPED_TRACE(::testing::Message() << failures << " after " << successes);
    Lack lack(successes, failures);
    const Ending ending = LiveApart(lack);
    ASSERT_NE(ending, WRONG);
    if (ending == NOTHING_FAILED) break;
    ++points;
    exceptions += ending == RAN_OUT_AS_AN_EXCEPTION ? 1 : 0;
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
  for (const std::int64_t failures : {std::int64_t{1}, std::int64_t{2}, scarce::ALL}) {
    TryAll(failures, readsSettings);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Of, FirstFrame,
    ::testing::Values(Making{"AFrame", 64, PXL_Flag_NO_PLATFORM}, Making{"ASurface", 32, 0},
                      Making{"AMappedFile", 128, PXL_Flag_DEFERRED | PXL_Flag_MAPPED}),
    [](const auto& tested) { return tested.param.name; });

}  // namespace
