// The calls of the module, each with its results when memory is short.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <initializer_list>

#include "TRC_host.h"
#include "tests/out_of_memory/stage.h"

namespace {

constexpr Rect kSmall = {0, 0, 4, 10};
constexpr Rect kTaller = {0, 0, 9, 12};
constexpr Rect kLarge = {0, 0, 400, 420};
constexpr Rect kLarger = {0, 0, 500, 420};
constexpr Rect kTooWide = {0, -20000, 4, 20000};
constexpr Rect kTooLarge = {0, 0, 20000, 32766};
constexpr std::uint32_t kFrame = PXL_Flag_NO_PLATFORM;
constexpr std::uint32_t kMapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

using Step = std::function<void(Stage&)>;
using Run = std::function<std::int32_t(Stage&)>;
using Statuses = std::set<std::int32_t>;

void Nothing(Stage&) {
}

PXL_WorldHandle Make(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  PXL_WorldHandle worldH = nullptr;
  EXPECT_EQ(PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &worldH), PXL_Err_NONE);
  return worldH;
}

Step World(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  return [=](Stage& stage) { stage.worldH = Make(depth, rect, flags); };
}

Step LockedWorld(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  return [=](Stage& stage) {
    stage.worldH = Make(depth, rect, flags);
    EXPECT_EQ(PXL_LockPixels(0, stage.worldH, nullptr), PXL_Err_NONE);
  };
}

Step Pair(std::int32_t depth, std::int32_t otherDepth) {
  return [=](Stage& stage) {
    stage.worldH = Make(depth, kSmall, 0);
    stage.otherH = Make(otherDepth, kSmall, 0);
  };
}

void MakePurged(Stage& stage) {
  stage.worldH = Make(32, kSmall, PXL_Flag_PURGEABLE);
  K_PurgeHandlesAndCompact();
}

// Loads the translation again, so that no text was looked up in it.
Step InGerman(const Step& step) {
  return [step](Stage& stage) {
    EXPECT_EQ(K_SetTranslationFile(PXL_TRANSLATIONS "/de.txt", nullptr, 0), 1);
    step(stage);
  };
}

void BackToEnglish(const Stage&, std::int32_t) {
  K_SetTranslation(nullptr, nullptr, 0);
}

// ---- Creation

void CheckCreated(const Stage& stage, std::int32_t status, const Rect& rect) {
  if (status != PXL_Err_NONE) {
    EXPECT_EQ(stage.worldH, nullptr);
    return;
  }
  ASSERT_NE(stage.worldH, nullptr);
  const PXL_World& world = **stage.worldH;
  EXPECT_EQ(world.headMark, std::uint32_t{PXL_LiveMark});
  EXPECT_EQ(world.height, rect.bottom - rect.top);
  EXPECT_EQ(world.width, rect.right - rect.left);
  EXPECT_EQ(world.pixels.lockCount, 0);
}

Scenario Creation(const std::string& name, std::int32_t depth, const Rect& rect,
                  std::uint32_t flags, const Statuses& statuses) {
  return {
      .name = "CreationOf" + name + std::to_string(depth),
      .prepare = Nothing,
      .run =
          [=](Stage& stage) {
            return PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &stage.worldH);
          },
      .statuses = statuses,
      .reports = ExpectedReports::EachFailure,
      .check = [=](const Stage& stage, std::int32_t status) { CheckCreated(stage, status, rect); }};
}

Scenario CreationInPlace(const std::string& name, std::int32_t depth, std::uint32_t flags,
                         const Statuses& statuses) {
  const auto prepare = [](Stage& stage) {
    stage.otherH =
        reinterpret_cast<PXL_WorldHandle>(K_AllocateHandleClear(0, "record", sizeof(PXL_World)));
  };
  return {.name = "CreationInPlaceOf" + name + std::to_string(depth),
          .prepare = prepare,
          .run =
              [=](Stage& stage) {
                return PXL_NewWorld(nullptr, flags, &kSmall, depth, 0, stage.otherH, nullptr);
              },
          .statuses = statuses};
}

void AddCreations(std::vector<Scenario>& all) {
  for (const std::int32_t depth : {32, 64, 128}) {
    all.push_back(Creation("AHeapFrame", depth, kSmall, kFrame, {PXL_Err_NO_MEMORY}));
    all.push_back(
        Creation("APoolFrame", depth, kLarge, kFrame | PXL_Flag_CLEAR, {PXL_Err_NO_MEMORY}));
    all.push_back(Creation("AMappedFile", depth, kSmall, kMapped, {PXL_Err_NO_MEMORY}));
  }
  for (const std::int32_t depth : {8, 32}) {
    all.push_back(Creation("ASurface", depth, kSmall, PXL_Flag_PURGEABLE,
                           {PXL_Err_NO_MEMORY, QDE_Err_MEMORY_FULL}));
    all.push_back(Creation("ALargeSurface", depth, kLarge, PXL_Flag_CLEAR,
                           {PXL_Err_NO_MEMORY, QDE_Err_MEMORY_FULL}));
  }
  all.push_back(Creation("Geometry", 8, kSmall, PXL_Flag_DEFERRED, {PXL_Err_NO_MEMORY}));
  all.push_back(
      Creation("ARowTooLong", 64, kTooWide, 0, {PXL_Err_NO_MEMORY}).Giving(PXL_Err_REFUSED));
  all.push_back(Creation("AnImageTooLarge", 128, kTooLarge, 0, {}).Giving(PXL_Err_NO_MEMORY));
  all.push_back(CreationInPlace("AHeapFrame", 64, kFrame, {PXL_Err_NO_MEMORY}));
  all.push_back(CreationInPlace("ASurface", 32, 0, {QDE_Err_MEMORY_FULL}));
  all.push_back(CreationInPlace("AMappedFile", 128, kMapped, {PXL_Err_NO_MEMORY}));
}

// ---- Disposal: it needs no memory.

std::int32_t Dispose(Stage& stage) {
  const std::int32_t status = PXL_DisposeWorld(stage.worldH);
  stage.worldH = nullptr;
  return status;
}

// The bytes of a file that is released while it is mapped stay booked.
void TakeBookingBack(const Stage& stage, std::int32_t) {
  const auto bytes = static_cast<std::int32_t>(stage.before.pixels.frameSize);
  K_AccountAllocation(-bytes);
  K_AccountSystemAllocation(bytes);
}

void AddDisposals(std::vector<Scenario>& all) {
  const auto add = [&all](const std::string& name, const Step& prepare) {
    all.push_back({.name = "DisposalOf" + name,
                   .prepare = prepare,
                   .run = Dispose,
                   .statuses = {},
                   .reports = ExpectedReports::Never});
  };
  add("AHeapFrame", World(64, kSmall, kFrame));
  add("APoolFrame", World(128, kLarge, kFrame));
  add("ASurface", World(8, kLarge, 0));
  add("ALockedSurface", LockedWorld(32, kLarge, 0));
  add("AMappedFile", World(128, kSmall, kMapped));
  all.push_back({.name = "DisposalOfALockedMappedFile",
                 .prepare = LockedWorld(128, kSmall, kMapped),
                 .run = Dispose,
                 .statuses = {},
                 .reports = ExpectedReports::Never,
                 .check = TakeBookingBack});
}

// ---- Locks

std::int32_t Lock(Stage& stage) {
  return PXL_LockPixels(0, stage.worldH, nullptr);
}

std::int32_t LoadLock(Stage& stage) {
  return PXL_LoadLockPixels(0, stage.worldH, nullptr, nullptr);
}

std::int32_t AskingLoadLock(Stage& stage) {
  return PXL_LoadLockPixels(0, stage.worldH, &stage.flag, nullptr);
}

std::int32_t Unlock(Stage& stage) {
  PXL_UnlockPixels(stage.worldH);
  return 0;
}

void CheckCount(const Stage& stage, std::int32_t count) {
  EXPECT_EQ((*stage.worldH)->pixels.lockCount, count);
}

void CheckLocked(const Stage& stage, std::int32_t status) {
  CheckCount(stage, status == PXL_Err_NONE ? 1 : 0);
}

// A lock of a mapped file counts even if it fails.
void CheckLockedMapped(const Stage& stage, std::int32_t status) {
  CheckCount(stage, 1);
  EXPECT_EQ((*stage.worldH)->pixels.frame != nullptr, status == PXL_Err_NONE);
}

// With a flag to set, nothing is reported.
void CheckAsked(const Stage& stage, std::int32_t) {
  EXPECT_TRUE(stage.flag == 0 || stage.flag == 1);
  CheckCount(stage, stage.flag);
}

void CheckUnlocked(const Stage& stage, std::int32_t) {
  CheckCount(stage, 0);
  EXPECT_EQ((*stage.worldH)->pixels.baseAddr, nullptr);
}

void AddLocks(std::vector<Scenario>& all) {
  const ExpectedReports each = ExpectedReports::EachFailure;
  const Step mapped = World(128, kSmall, kMapped);
  all.push_back({.name = "LockOfAFrame",
                 .prepare = World(64, kSmall, 0),
                 .run = Lock,
                 .statuses = {},
                 .reports = each,
                 .check = CheckLocked});
  all.push_back({.name = "LockOfASurface",
                 .prepare = World(32, kSmall, 0),
                 .run = Lock,
                 .statuses = {},
                 .reports = each,
                 .check = CheckLocked});
  all.push_back({.name = "LockOfAMappedFile",
                 .prepare = mapped,
                 .run = Lock,
                 .statuses = {PXL_Err_NO_MEMORY},
                 .reports = each,
                 .check = CheckLockedMapped});
  all.push_back(Scenario{.name = "LockOfPurgedPixels",
                         .prepare = MakePurged,
                         .run = Lock,
                         .statuses = {},
                         .reports = each,
                         .check = CheckLocked}
                    .Giving(PXL_Err_PURGED));
}

void AddLoadLocks(std::vector<Scenario>& all) {
  const ExpectedReports each = ExpectedReports::EachFailure;
  all.push_back({.name = "LoadLockOfASurface",
                 .prepare = World(8, kSmall, 0),
                 .run = LoadLock,
                 .statuses = {},
                 .reports = each,
                 .check = CheckLocked});
  all.push_back({.name = "LoadLockOfPurgedPixels",
                 .prepare = MakePurged,
                 .run = LoadLock,
                 .statuses = {QDE_Err_MEMORY_FULL},
                 .reports = each,
                 .check = CheckLocked});
  all.push_back({.name = "AskingLoadLockOfPurgedPixels",
                 .prepare = MakePurged,
                 .run = AskingLoadLock,
                 .statuses = {},
                 .reports = ExpectedReports::Never,
                 .check = CheckAsked});
}

void AddUnlocks(std::vector<Scenario>& all) {
  const ExpectedReports each = ExpectedReports::EachFailure;
  all.push_back({.name = "UnlockOfAFrame",
                 .prepare = LockedWorld(64, kSmall, 0),
                 .run = Unlock,
                 .statuses = {},
                 .reports = each,
                 .check = CheckUnlocked});
  all.push_back({.name = "UnlockOfASurface",
                 .prepare = LockedWorld(32, kSmall, 0),
                 .run = Unlock,
                 .statuses = {},
                 .reports = each,
                 .check = CheckUnlocked});
  all.push_back({.name = "UnlockOfAMappedFile",
                 .prepare = LockedWorld(64, kSmall, kMapped),
                 .run = Unlock,
                 .statuses = {},
                 .reports = each,
                 .check = CheckUnlocked});
  all.push_back({.name = "UnlockTooMany",
                 .prepare = World(64, kSmall, 0),
                 .run = Unlock,
                 .statuses = {},
                 .reports = ExpectedReports::Always});
}

// ---- Updates

void CheckUpdated(const Stage& stage, std::int32_t status, const Rect& rect) {
  const PXL_World& world = **stage.worldH;
  const bool taken = status == PXL_Err_NONE;
  EXPECT_EQ(world.height, taken ? rect.bottom : stage.before.height);
  EXPECT_EQ(world.width, taken ? rect.right : stage.before.width);
  EXPECT_EQ(world.pixels.lockCount, 0);
  if (taken) return;
  EXPECT_EQ(world.depth, stage.before.depth);
  EXPECT_EQ(world.pixels.rowBytes, stage.before.pixels.rowBytes);
  if (world.hasGWorld == 0 && world.pixels.frame == nullptr) {
    EXPECT_NE(world.flags & PXL_Flag_PURGEABLE, 0U);
  }
}

Scenario Update(const std::string& name, const Step& prepare, std::int32_t depth, const Rect& rect,
                const Statuses& statuses) {
  return {
      .name = "UpdateOf" + name,
      .prepare = prepare,
      .run = [=](Stage& stage) { return PXL_UpdateWorld(depth, &rect, 0, nullptr, stage.worldH); },
      .statuses = statuses,
      .reports = ExpectedReports::EachFailure,
      .check = [=](const Stage& stage, std::int32_t status) { CheckUpdated(stage, status, rect); }};
}

void AddUpdates(std::vector<Scenario>& all) {
  all.push_back(Update("AHeapFrame", World(64, kSmall, kFrame), 0, kTaller, {PXL_Err_NO_MEMORY}));
  all.push_back(Update("APoolFrame", World(128, kLarge, kFrame), 0, kLarger, {PXL_Err_NO_MEMORY}));
  all.push_back(Update("ASurface", World(32, kSmall, 0), 0, kTaller, {QDE_Err_MEMORY_FULL}));
  all.push_back(Update("ASurfaceTo8Bits", World(32, kSmall, 0), 8, kTaller, {QDE_Err_MEMORY_FULL}));
  all.push_back(
      Update("ASurfaceTo32Bits", World(8, kLarge, 0), 32, kLarger, {QDE_Err_MEMORY_FULL}));
}

// ---- Frames and reports

void AddFrames(std::vector<Scenario>& all) {
  for (const std::uint64_t size : {std::uint64_t{1000}, std::uint64_t{1000000}}) {
    const std::string name = std::to_string(size) + "Bytes";
    const auto allocate = [size](Stage& stage) {
      stage.frameSize = size;
      return PXL_AllocateFrameQuiet(size, 0, &stage.frame);
    };
    const auto free = [](Stage& stage) { return PXL_FreeFrame(stage.frame, stage.frameSize); };
    all.push_back({.name = "AllocationOf" + name,
                   .prepare = Nothing,
                   .run = allocate,
                   .statuses = {PXL_Err_NO_MEMORY},
                   .reports = ExpectedReports::Never,
                   .check = [](const Stage& stage, std::int32_t status) {
                     EXPECT_EQ(stage.frame == nullptr, status == PXL_Err_NO_MEMORY);
                   }});
    all.push_back({.name = "FreeingOf" + name,
                   .prepare = [allocate](Stage& stage) { EXPECT_EQ(allocate(stage), 0); },
                   .run =
                       [free](Stage& stage) {
                         const std::int32_t status = free(stage);
                         stage.frame = nullptr;
                         return status;
                       },
                   .statuses = {},
                   .reports = ExpectedReports::Never});
  }
}

Run Report(std::int32_t error, std::int16_t width, std::int16_t height) {
  return [=](Stage&) { return PXL_ReportWorldAllocationFailure(error, 0, width, height, 128); };
}

// Each report arrives, with the text for which there is memory.
void AddReports(std::vector<Scenario>& all) {
  const auto add = [&all](const std::string& name, const Run& run) {
    all.push_back({.name = "ReportOf" + name,
                   .prepare = Nothing,
                   .run = run,
                   .statuses = {},
                   .reports = ExpectedReports::Always});
    all.push_back({.name = "GermanReportOf" + name,
                   .prepare = InGerman(Nothing),
                   .run = run,
                   .statuses = {},
                   .reports = ExpectedReports::Always,
                   .check = BackToEnglish});
  };
  add("AShortage", Report(PXL_Err_NO_MEMORY, 100, 100));
  add("AnImageOverTheLimit", Report(QDE_Err_MEMORY_FULL, 32767, 32767));
  add("AnErrorOfTheLayer", Report(QDE_Err_PARAMETER, 100, 100));
  add("AnUnknownError", Report(-12345, 100, 100));
  add("ASecondBirth", [](Stage&) { return PXL_Birth(0); });
}

void AddGermanReports(std::vector<Scenario>& all) {
  all.push_back(Scenario{
      .name = "GermanLockOfPurgedPixels",
      .prepare = InGerman(MakePurged),
      .run = Lock,
      .statuses = {},
      .reports = ExpectedReports::EachFailure,
      .check = [](const Stage& stage, std::int32_t status) {
        CheckLocked(stage, status);
        BackToEnglish(stage, status);
      }}.Giving(PXL_Err_PURGED));
  all.push_back(Scenario{.name = "GermanRowTooLong",
                         .prepare = InGerman(Nothing),
                         .run =
                             [](Stage& stage) {
                               return PXL_NewWorld(nullptr, 0, &kTooWide, 64, 0, nullptr,
                                                   &stage.worldH);
                             },
                         .statuses = {PXL_Err_NO_MEMORY},
                         .reports = ExpectedReports::EachFailure,
                         .check = BackToEnglish}
                    .Giving(PXL_Err_REFUSED));
}

// Reports of a host's mistakes.
void AddMistakes(std::vector<Scenario>& all) {
  all.push_back(Scenario{.name = "VersionMismatch",
                         .prepare = Nothing,
                         .run = [](Stage&) { return PXL_CheckVersions(1, 30); },
                         .statuses = {}}
                    .Giving(PXL_Err_VERSION));
  all.push_back(Scenario{.name = "DeathTwice",
                         .prepare = [](Stage&) { PXL_Death(); },
                         .run = [](Stage&) { return PXL_Death(); },
                         .statuses = {},
                         .reports = ExpectedReports::EachFailure,
                         .check = [](const Stage&, std::int32_t) { PXL_Birth(0); }}
                    .Giving(PXL_Err_INVALID));
}

// ---- Logging

// The log goes to standard error, which is discarded meanwhile.
int standardError = -1;

void LogEverything(Stage& stage) {
  stage.worldH = Make(64, kLarge, kFrame);
  std::fflush(stderr);
  standardError = dup(STDERR_FILENO);
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  dup2(nowhere, STDERR_FILENO);
  close(nowhere);
  TRC_SetLevel(0);
}

void LogProblems(const Stage&, std::int32_t) {
  TRC_SetLevel(TRC_Level_PROBLEM);
  std::fflush(stderr);
  dup2(standardError, STDERR_FILENO);
  close(standardError);
}

void AddLogged(std::vector<Scenario>& all) {
  const Run report = Report(PXL_Err_NO_MEMORY, 100, 100);
  all.push_back({.name = "LoggedReport",
                 .prepare = LogEverything,
                 .run = report,
                 .statuses = {},
                 .reports = ExpectedReports::Always,
                 .check = LogProblems});
  all.push_back(
      {.name = "LoggedUpdate",
       .prepare = LogEverything,
       .run = [](Stage& stage) { return PXL_UpdateWorld(0, &kLarger, 0, nullptr, stage.worldH); },
       .statuses = {PXL_Err_NO_MEMORY},
       .reports = ExpectedReports::EachFailure,
       .check = LogProblems});
}

// ---- Pixels

// A failure of the drawing layer leaves the pixels undrawn; the call returns 0.
void AddBlits(std::vector<Scenario>& all) {
  const std::int32_t depths[][2] = {{8, 8}, {8, 32}, {32, 8}, {32, 32}};
  for (const auto& [from, to] : depths) {
    for (const std::uint16_t mode : std::initializer_list<std::uint16_t>{0, 8, 16}) {
      all.push_back({.name = "BlitFrom" + std::to_string(from) + "To" + std::to_string(to) +
                             "InMode" + std::to_string(mode),
                     .prepare = Pair(from, to),
                     .run =
                         [mode](Stage& stage) {
                           const Rect half = {0, 0, 2, 5};
                           return PXL_Blit(stage.worldH, stage.otherH, &half, &kSmall, mode);
                         },
                     .statuses = {},
                     .reports = ExpectedReports::Never});
    }
  }
  all.push_back(
      {.name = "BlitOfUnhandledDepths",
       .prepare = Pair(64, 128),
       .run =
           [](Stage& stage) { return PXL_Blit(stage.worldH, stage.otherH, nullptr, nullptr, 0); },
       .statuses = {},
       .reports = ExpectedReports::Always});
}

void AddPixels(std::vector<Scenario>& all) {
  const Run setOrder = [](Stage& stage) { return PXL_SetChannelOrder(stage.worldH, 1); };
  const Run clear = [](Stage& stage) { return PXL_ClearWorldToLong(stage.worldH, 0x01020304); };
  all.push_back({.name = "OrderOfASurface",
                 .prepare = World(32, kSmall, 0),
                 .run = setOrder,
                 .statuses = {},
                 .reports = ExpectedReports::Never});
  all.push_back({.name = "OrderOfAFrame",
                 .prepare = World(32, kSmall, kFrame),
                 .run = setOrder,
                 .statuses = {},
                 .reports = ExpectedReports::Never});
  all.push_back(Scenario{
      .name = "OrderOfADeepWorld", .prepare = World(64, kSmall, 0), .run = setOrder, .statuses = {}}
                    .Giving(PXL_Err_REFUSED));
  all.push_back({.name = "ClearingOfASurface",
                 .prepare = World(32, kSmall, 0),
                 .run = clear,
                 .statuses = {},
                 .reports = ExpectedReports::Never});
  all.push_back({.name = "ClearingOfAFrame",
                 .prepare = World(128, kLarge, 0),
                 .run = clear,
                 .statuses = {},
                 .reports = ExpectedReports::Never});
}

}  // namespace

std::vector<Scenario> AllScenarios() {
  std::vector<Scenario> all;
  AddCreations(all);
  AddDisposals(all);
  AddLocks(all);
  AddLoadLocks(all);
  AddUnlocks(all);
  AddUpdates(all);
  AddFrames(all);
  AddReports(all);
  AddGermanReports(all);
  AddMistakes(all);
  AddLogged(all);
  AddBlits(all);
  AddPixels(all);
  return all;
}

std::vector<Scenario> MappedScenarios() {
  std::vector<Scenario> mapped;
  for (const Scenario& scenario : AllScenarios()) {
    if (scenario.name.find("Mapped") != std::string::npos) mapped.push_back(scenario);
  }
  return mapped;
}

std::int32_t MakeAMappedFile(Stage& stage) {
  return PXL_NewWorld(nullptr, kMapped, &kSmall, 32, 0, nullptr, &stage.worldH);
}
