// The calls of the module, each with what it promises when memory is short.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <initializer_list>

#include "TRC_host.h"
#include "tests/out_of_memory/stage.h"

namespace {

constexpr Rect SMALL = {0, 0, 4, 10};
constexpr Rect TALLER = {0, 0, 9, 12};
constexpr Rect LARGE = {0, 0, 400, 420};
constexpr Rect LARGER = {0, 0, 500, 420};
constexpr Rect TOO_WIDE = {0, -20000, 4, 20000};
constexpr Rect TOO_LARGE = {0, 0, 20000, 32766};
constexpr std::uint32_t FRAME = PXL_Flag_NO_PLATFORM;
constexpr std::uint32_t MAPPED = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

using Step = std::function<void(Stage&)>;
using Run = std::function<std::int32_t(Stage&)>;
using Statuses = std::set<std::int32_t>;

void Nothing(Stage&) {
}

PXL_WorldHandle Make(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  PXL_WorldHandle worldH = nullptr;
  EXPECT_EQ(PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &worldH), 0);
  return worldH;
}

Step World(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  return [=](Stage& stage) { stage.worldH = Make(depth, rect, flags); };
}

Step LockedWorld(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  return [=](Stage& stage) {
    stage.worldH = Make(depth, rect, flags);
    EXPECT_EQ(PXL_LockPixels(0, stage.worldH, nullptr), 0);
  };
}

Step Pair(std::int32_t depth, std::int32_t otherDepth) {
  return [=](Stage& stage) {
    stage.worldH = Make(depth, SMALL, 0);
    stage.otherH = Make(otherDepth, SMALL, 0);
  };
}

void MakePurged(Stage& stage) {
  stage.worldH = Make(32, SMALL, PXL_Flag_PURGEABLE);
  K_PurgeHandlesAndCompact();
}

// A translation anew, so that no text was looked up in it.
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
  if (status != 0) {
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
  return {"CreationOf" + name + std::to_string(depth),
          Nothing,
          [=](Stage& stage) {
            return PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &stage.worldH);
          },
          statuses,
          Reports::EachFailure,
          [=](const Stage& stage, std::int32_t status) { CheckCreated(stage, status, rect); }};
}

Scenario CreationInPlace(const std::string& name, std::int32_t depth, std::uint32_t flags,
                         const Statuses& statuses) {
  const auto prepare = [](Stage& stage) {
    stage.otherH =
        reinterpret_cast<PXL_WorldHandle>(K_AllocateHandleClear(0, "record", sizeof(PXL_World)));
  };
  return {"CreationInPlaceOf" + name + std::to_string(depth), prepare,
          [=](Stage& stage) {
            return PXL_NewWorld(nullptr, flags, &SMALL, depth, 0, stage.otherH, nullptr);
          },
          statuses};
}

void AddCreations(std::vector<Scenario>& all) {
  for (const std::int32_t depth : {32, 64, 128}) {
    all.push_back(Creation("AHeapFrame", depth, SMALL, FRAME, {4}));
    all.push_back(Creation("APoolFrame", depth, LARGE, FRAME | PXL_Flag_CLEAR, {4}));
    all.push_back(Creation("AMappedFile", depth, SMALL, MAPPED, {4}));
  }
  for (const std::int32_t depth : {8, 32}) {
    all.push_back(Creation("ASurface", depth, SMALL, PXL_Flag_PURGEABLE, {4, -108}));
    all.push_back(Creation("ALargeSurface", depth, LARGE, PXL_Flag_CLEAR, {4, -108}));
  }
  all.push_back(Creation("Geometry", 8, SMALL, PXL_Flag_DEFERRED, {4}));
  all.push_back(Creation("ARowTooLong", 64, TOO_WIDE, 0, {4}).Giving(3));
  all.push_back(Creation("AnImageTooLarge", 128, TOO_LARGE, 0, {}).Giving(4));
  all.push_back(CreationInPlace("AHeapFrame", 64, FRAME, {4}));
  all.push_back(CreationInPlace("ASurface", 32, 0, {-108}));
  all.push_back(CreationInPlace("AMappedFile", 128, MAPPED, {4}));
}

// ---- Disposal: it needs no memory.

std::int32_t Dispose(Stage& stage) {
  const std::int32_t status = PXL_DisposeWorld(stage.worldH);
  stage.worldH = nullptr;
  return status;
}

// The bytes of a file that goes while it is mapped stay booked as they were.
void TakeBookingBack(const Stage& stage, std::int32_t) {
  const auto bytes = static_cast<std::int32_t>(stage.before.pixels.frameSize);
  K_AccountAllocation(-bytes);
  K_AccountSystemAllocation(bytes);
}

void AddDisposals(std::vector<Scenario>& all) {
  const auto add = [&all](const std::string& name, const Step& prepare) {
    all.push_back({"DisposalOf" + name, prepare, Dispose, {}, Reports::Never});
  };
  add("AHeapFrame", World(64, SMALL, FRAME));
  add("APoolFrame", World(128, LARGE, FRAME));
  add("ASurface", World(8, LARGE, 0));
  add("ALockedSurface", LockedWorld(32, LARGE, 0));
  add("AMappedFile", World(128, SMALL, MAPPED));
  all.push_back({"DisposalOfALockedMappedFile",
                 LockedWorld(128, SMALL, MAPPED),
                 Dispose,
                 {},
                 Reports::Never,
                 TakeBookingBack});
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
  CheckCount(stage, status == 0 ? 1 : 0);
}

// That of a mapped file counts, whatever comes of it.
void CheckLockedMapped(const Stage& stage, std::int32_t status) {
  CheckCount(stage, 1);
  EXPECT_EQ((*stage.worldH)->pixels.frame != nullptr, status == 0);
}

// Whoever asks is told, not warned.
void CheckAsked(const Stage& stage, std::int32_t) {
  EXPECT_TRUE(stage.flag == 0 || stage.flag == 1);
  CheckCount(stage, stage.flag);
}

void CheckUnlocked(const Stage& stage, std::int32_t) {
  CheckCount(stage, 0);
  EXPECT_EQ((*stage.worldH)->pixels.baseAddr, nullptr);
}

void AddLocks(std::vector<Scenario>& all) {
  const Reports each = Reports::EachFailure;
  const Step mapped = World(128, SMALL, MAPPED);
  all.push_back({"LockOfAFrame", World(64, SMALL, 0), Lock, {}, each, CheckLocked});
  all.push_back({"LockOfASurface", World(32, SMALL, 0), Lock, {}, each, CheckLocked});
  all.push_back({"LockOfAMappedFile", mapped, Lock, {4}, each, CheckLockedMapped});
  all.push_back(
      Scenario{"LockOfPurgedPixels", MakePurged, Lock, {}, each, CheckLocked}.Giving(0x701));
  all.push_back({"LoadLockOfASurface", World(8, SMALL, 0), LoadLock, {}, each, CheckLocked});
  all.push_back({"LoadLockOfPurgedPixels", MakePurged, LoadLock, {-108}, each, CheckLocked});
  all.push_back(
      {"AskingLoadLockOfPurgedPixels", MakePurged, AskingLoadLock, {}, Reports::Never, CheckAsked});
  all.push_back({"UnlockOfAFrame", LockedWorld(64, SMALL, 0), Unlock, {}, each, CheckUnlocked});
  all.push_back({"UnlockOfASurface", LockedWorld(32, SMALL, 0), Unlock, {}, each, CheckUnlocked});
  all.push_back(
      {"UnlockOfAMappedFile", LockedWorld(64, SMALL, MAPPED), Unlock, {}, each, CheckUnlocked});
  all.push_back({"UnlockTooMany", World(64, SMALL, 0), Unlock, {}, Reports::Always});
}

// ---- Updates

void CheckUpdated(const Stage& stage, std::int32_t status, const Rect& rect) {
  const PXL_World& world = **stage.worldH;
  const bool taken = status == 0;
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
  return {"UpdateOf" + name,
          prepare,
          [=](Stage& stage) { return PXL_UpdateWorld(depth, &rect, 0, nullptr, stage.worldH); },
          statuses,
          Reports::EachFailure,
          [=](const Stage& stage, std::int32_t status) { CheckUpdated(stage, status, rect); }};
}

void AddUpdates(std::vector<Scenario>& all) {
  all.push_back(Update("AHeapFrame", World(64, SMALL, FRAME), 0, TALLER, {4}));
  all.push_back(Update("APoolFrame", World(128, LARGE, FRAME), 0, LARGER, {4}));
  all.push_back(Update("ASurface", World(32, SMALL, 0), 0, TALLER, {-108}));
  all.push_back(Update("ASurfaceTo8Bits", World(32, SMALL, 0), 8, TALLER, {-108}));
  all.push_back(Update("ASurfaceTo32Bits", World(8, LARGE, 0), 32, LARGER, {-108}));
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
    all.push_back({"AllocationOf" + name,
                   Nothing,
                   allocate,
                   {4},
                   Reports::Never,
                   [](const Stage& stage, std::int32_t status) {
                     EXPECT_EQ(stage.frame == nullptr, status == 4);
                   }});
    all.push_back({"FreeingOf" + name,
                   [allocate](Stage& stage) { EXPECT_EQ(allocate(stage), 0); },
                   [free](Stage& stage) {
                     const std::int32_t status = free(stage);
                     stage.frame = nullptr;
                     return status;
                   },
                   {},
                   Reports::Never});
  }
}

Run Report(std::int32_t error, std::int16_t width, std::int16_t height) {
  return [=](Stage&) { return PXL_ReportWorldAllocationFailure(error, 0, width, height, 128); };
}

// Each arrives, in whatever words there is memory for.
void AddReports(std::vector<Scenario>& all) {
  const auto add = [&all](const std::string& name, const Run& run) {
    all.push_back({"ReportOf" + name, Nothing, run, {}, Reports::Always});
    all.push_back(
        {"GermanReportOf" + name, InGerman(Nothing), run, {}, Reports::Always, BackToEnglish});
  };
  add("AShortage", Report(4, 100, 100));
  add("AnImageOverTheLimit", Report(-108, 32767, 32767));
  add("AnErrorOfTheLayer", Report(-50, 100, 100));
  add("AnUnknownError", Report(-12345, 100, 100));
  add("ASecondBirth", [](Stage&) { return PXL_Birth(0); });
  all.push_back(Scenario{
      "GermanLockOfPurgedPixels",
      InGerman(MakePurged),
      Lock,
      {},
      Reports::EachFailure,
      [](const Stage& stage, std::int32_t status) {
        CheckLocked(stage, status);
        BackToEnglish(stage, status);
      }}.Giving(0x701));
  all.push_back(Scenario{"GermanRowTooLong",
                         InGerman(Nothing),
                         [](Stage& stage) {
                           return PXL_NewWorld(nullptr, 0, &TOO_WIDE, 64, 0, nullptr,
                                               &stage.worldH);
                         },
                         {4},
                         Reports::EachFailure,
                         BackToEnglish}
                    .Giving(3));
}

// Of what a host does wrong.
void AddMistakes(std::vector<Scenario>& all) {
  all.push_back(Scenario{
      "VersionMismatch",
      Nothing,
      [](Stage&) { return PXL_CheckVersions(1, 30); },
      {}}.Giving(7));
  all.push_back(Scenario{
      "DeathTwice",
      [](Stage&) { PXL_Death(); },
      [](Stage&) { return PXL_Death(); },
      {},
      Reports::EachFailure,
      [](const Stage&, std::int32_t) {
        PXL_Birth(0);
      }}.Giving(2));
}

// ---- Logging

// Standard error goes nowhere while it takes the log.
int standardError = -1;

void LogEverything(Stage& stage) {
  stage.worldH = Make(64, LARGE, FRAME);
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
  const Run report = Report(4, 100, 100);
  all.push_back({"LoggedReport", LogEverything, report, {}, Reports::Always, LogProblems});
  all.push_back({"LoggedUpdate",
                 LogEverything,
                 [](Stage& stage) { return PXL_UpdateWorld(0, &LARGER, 0, nullptr, stage.worldH); },
                 {4},
                 Reports::EachFailure,
                 LogProblems});
}

// ---- Pixels

// What the drawing layer cannot draw it leaves undrawn; the call gives 0 anyway.
void AddBlits(std::vector<Scenario>& all) {
  const std::int32_t depths[][2] = {{8, 8}, {8, 32}, {32, 8}, {32, 32}};
  for (const auto& [from, to] : depths) {
    for (const std::uint16_t mode : std::initializer_list<std::uint16_t>{0, 8, 16}) {
      all.push_back({"BlitFrom" + std::to_string(from) + "To" + std::to_string(to) + "InMode" +
                         std::to_string(mode),
                     Pair(from, to),
                     [mode](Stage& stage) {
                       const Rect half = {0, 0, 2, 5};
                       return PXL_Blit(stage.worldH, stage.otherH, &half, &SMALL, mode);
                     },
                     {},
                     Reports::Never});
    }
  }
  all.push_back(
      {"BlitOfUnhandledDepths",
       Pair(64, 128),
       [](Stage& stage) { return PXL_Blit(stage.worldH, stage.otherH, nullptr, nullptr, 0); },
       {},
       Reports::Always});
}

void AddPixels(std::vector<Scenario>& all) {
  const Run setOrder = [](Stage& stage) { return PXL_SetChannelOrder(stage.worldH, 1); };
  const Run clear = [](Stage& stage) { return PXL_ClearWorldToLong(stage.worldH, 0x01020304); };
  all.push_back({"OrderOfASurface", World(32, SMALL, 0), setOrder, {}, Reports::Never});
  all.push_back({"OrderOfAFrame", World(32, SMALL, FRAME), setOrder, {}, Reports::Never});
  all.push_back(Scenario{"OrderOfADeepWorld", World(64, SMALL, 0), setOrder, {}}.Giving(3));
  all.push_back({"ClearingOfASurface", World(32, SMALL, 0), clear, {}, Reports::Never});
  all.push_back({"ClearingOfAFrame", World(128, LARGE, 0), clear, {}, Reports::Never});
}

}  // namespace

std::vector<Scenario> AllScenarios() {
  std::vector<Scenario> all;
  AddCreations(all);
  AddDisposals(all);
  AddLocks(all);
  AddUpdates(all);
  AddFrames(all);
  AddReports(all);
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
  return PXL_NewWorld(nullptr, MAPPED, &SMALL, 32, 0, nullptr, &stage.worldH);
}
