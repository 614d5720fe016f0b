// Plays the scenarios and checks what they leave.
#include "tests/out_of_memory/stage.h"

#include <new>

#include "tests/support/files/open_files.h"
#include "tests/support/memory/scarce_memory.h"

namespace {

bool IsLive(PXL_WorldHandle handle) {
  return handle != nullptr && (*handle)->headMark == PXL_LiveMark;
}

void CheckReports(const Scenario& scenario, const Played& played) {
  switch (scenario.reports) {
    case ExpectedReports::EachFailure:
      if (played.status == PXL_Err_NONE) return;
      [[fallthrough]];
    case ExpectedReports::Always:
      EXPECT_GE(played.reports, 1U);
      return;
    case ExpectedReports::Never:
      EXPECT_EQ(played.reports, 0U);
  }
}

void CheckWorlds(const Stage& stage) {
  for (PXL_WorldHandle handle : {stage.worldH, stage.otherH}) {
    if (handle == nullptr) continue;
    EXPECT_EQ((*handle)->headMark, (*handle)->tailMark);
    EXPECT_EQ(K_IsHandleLocked(reinterpret_cast<Handle>(handle)), 0);
  }
}

// A lock that could not map the pixels counts all the same, and must not be
// unlocked.
bool IsLockedWithoutView(const PXL_World& world) {
  return world.pixels.provider != nullptr && world.pixels.frame == nullptr &&
         world.pixels.lockCount > 0;
}

void Use(PXL_WorldHandle handle) {
  std::uint8_t loaded = 0;
  std::uint8_t reloaded = 0;
  EXPECT_EQ(PXL_LoadLockPixels(0, handle, &loaded, &reloaded), PXL_Err_NONE);
  EXPECT_EQ(loaded, 1);
  if (PXLp_GetPixBaseAddr(handle) != nullptr) {
    EXPECT_EQ(PXL_ClearWorldToLong(handle, 0x01020304), PXL_Err_NONE);
  }
  while ((*handle)->pixels.lockCount > 0) PXL_UnlockPixels(handle);
}

// A World can still be locked and written to, and be disposed of.
void UseAndDispose(PXL_WorldHandle handle) {
  if (!IsLive(handle)) return;
  if (!IsLockedWithoutView(**handle)) Use(handle);
  EXPECT_EQ(PXL_DisposeWorld(handle), PXL_Err_NONE);
}

void Settle(const Stage& stage) {
  for (PXL_WorldHandle handle : {stage.worldH, stage.otherH}) {
    UseAndDispose(handle);
    // One of the caller's stays with the caller.
    if (handle != nullptr && K_IsHandle(handle) != 0)
      K_FreeHandle(reinterpret_cast<Handle>(handle));
  }
  if (stage.frame != nullptr) PXL_FreeFrame(stage.frame, stage.frameSize);
  EmptyCaches();
}

Played Run(const Scenario& scenario, Stage& stage, InjectedFailures& injected,
           KeptReports& reports) {
  Played played;
  reports.Forget();
  injected.Begin();
  try {
    played.status = scenario.run(stage);
  } catch (const std::bad_alloc&) {
    played.threw = true;
  }
  injected.End();
  played.failures = injected.Failures();
  played.reports = reports.Count();
  for (const KeptReport& report : reports.All()) EXPECT_NE(report.text, "");
  return played;
}

}  // namespace

std::ostream& operator<<(std::ostream& stream, const Scenario& scenario) {
  return stream << scenario.name;
}

std::ostream& operator<<(std::ostream& stream, const Levels& levels) {
  return stream << levels.holdings << ", " << levels.worlds << " Worlds, "
                << levels.descriptors.size() << " descriptors";
}

Levels CurrentLevels() {
  return {CurrentHoldings(), PXLp_G.worldCount, OpenDescriptors()};
}

void EmptyCaches() {
  K_SetPoolLimit(0);
  K_SetPoolLimit(K_DefaultPoolLimit);
  K_SetScramble(0);
}

void FailingAllocations::Begin() {
  scarce::Begin(successes_, failures_);
}

void FailingAllocations::End() {
  scarce::End();
}

std::int64_t FailingAllocations::Failures() const {
  return scarce::Failures();
}

Played Play(const Scenario& scenario, InjectedFailures& injected) {
  const Levels before = CurrentLevels();
  KeptReports reports(kMostReports);
  Stage stage;
  scenario.prepare(stage);
  K_SetScramble(1);
  if (stage.worldH != nullptr) stage.before = **stage.worldH;
  GrafPtr port = nullptr;
  GetPort(&port);
  const GDHandle device = GetGDevice();

  const Played played = Run(scenario, stage, injected, reports);

  EXPECT_FALSE(played.threw);
  const bool asEver = played.status == scenario.undisturbed;
  EXPECT_TRUE(asEver || (played.failures > 0 && scenario.statuses.contains(played.status)))
      << played.status;
  CheckReports(scenario, played);
  CheckWorlds(stage);
  scenario.check(stage, played.status);
  GrafPtr portAfter = nullptr;
  GetPort(&portAfter);
  EXPECT_EQ(portAfter, port);
  EXPECT_EQ(GetGDevice(), device);
  EXPECT_FALSE(QDE_IsBitmapCreationForced());
  Settle(stage);
  EXPECT_EQ(CurrentLevels(), before);
  return played;
}
