// Locks and unlocks, with and without purged pixels.
#include "tests/failures/operation.h"

namespace {

constexpr Rect kSmall = {0, 0, 4, 10};
constexpr std::uint32_t kMapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

using Step = std::function<void(OperationFixture&)>;
using Run = std::function<std::int32_t(OperationFixture&)>;

const Table kDead = {{.call = "Kp_ReportQuexErrString",
                      .nth = 1,
                      .ways = {Way::Answers99},
                      .result = {.status = 99, .reports = 1}}};
const Table kDeadQuietly = {{.call = "Kp_ReportQuexErrString",
                             .nth = 1,
                             .ways = {Way::Answers99},
                             .result = {.status = PXL_Err_NONE, .reports = 1}}};

std::int32_t Lock(OperationFixture& fixture) {
  return PXL_LockPixels(0, fixture.worldH, nullptr);
}

std::int32_t LockAndAsk(OperationFixture& fixture) {
  return PXL_LockPixels(0, fixture.worldH, &fixture.flag);
}

std::int32_t Unlock(OperationFixture& fixture) {
  PXL_UnlockPixels(fixture.worldH);
  return 0;
}

std::int32_t LoadLock(OperationFixture& fixture) {
  return PXL_LoadLockPixels(0, fixture.worldH, nullptr, nullptr);
}

std::int32_t LoadLockAndAsk(OperationFixture& fixture) {
  return PXL_LoadLockPixels(0, fixture.worldH, &fixture.flag, nullptr);
}

Step World(std::int32_t depth, std::uint32_t flags) {
  return [=](OperationFixture& fixture) {
    fixture.BeBorn();
    fixture.worldH = fixture.Make(depth, kSmall, flags);
  };
}

void MakeADeadWorld(OperationFixture& fixture) {
  fixture.BeBorn();
  fixture.worldH = fixture.CallerHandle();
}

Step Locked(const Step& make) {
  return [make](OperationFixture& fixture) {
    make(fixture);
    Lock(fixture);
  };
}

Step Purged(const std::vector<Fault>& further = {}) {
  return [further](OperationFixture& fixture) {
    World(32, 0)(fixture);
    fixture.circumstances = further;
    fixture.circumstances.push_back({.call = "LockPixels", .nth = 1, .way = Way::Fails});
  };
}

// Its only mapping attempts have failed.
void LockWithoutView(OperationFixture& fixture) {
  World(32, kMapped)(fixture);
  recorder::Current().Fail("GetAddress", 1);
  recorder::Current().Fail("GetAddress", 2);
  Lock(fixture);
}

Operation On(const std::string& name, const Step& prepare, const Run& run, Result result,
             const Table& table) {
  return {.name = name,
          .effect = Effect::Locks,
          .prepare = prepare,
          .run = run,
          .result = result,
          .table = table};
}

Operation Unlocking(const std::string& name, const Step& prepare, Result result,
                    const Table& table) {
  return {.name = name,
          .effect = Effect::Unlocks,
          .prepare = prepare,
          .run = Unlock,
          .result = result,
          .table = table};
}

// Once one attempt has failed, the second counts as failed as well.
const Table kMapping = {{.call = "K_PurgeLoop",
                         .nth = 1,
                         .ways = {Way::GivesUp, Way::GivesNothing, Way::GivesCode},
                         .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}},
                        {.call = "GetAddress",
                         .nth = 1,
                         .ways = {Way::Fails, Way::FailsFromHere, Way::ThrowsException,
                                  Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText},
                         .result = {.status = PXL_Err_NO_MEMORY, .reports = 2}}};

// One report is lost to an exception in it; K reports that exception instead.
const Result kMappingToldOnce = {.status = PXL_Err_NO_MEMORY, .reports = 1};

// An exception in the report of the failure ends the loop.
Table RefusedMappingTable() {
  Table table = {{.call = "K_PurgeLoop",
                  .nth = 1,
                  .ways = {Way::GivesUp, Way::GivesNothing},
                  .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}},
                 {.call = "K_PurgeLoop",
                  .nth = 1,
                  .ways = {Way::GivesCode},
                  .result = {.status = PXL_Err_NO_MEMORY, .reports = 2}}};
  for (const int attempt : {1, 2}) {
    const int before = attempt - 1;
    table.push_back({.call = "GetAddress",
                     .nth = attempt,
                     .ways = {Way::Fails, Way::FailsFromHere, Way::ThrowsException, Way::ThrowsLong,
                              Way::ThrowsZero, Way::ThrowsText},
                     .result = {.status = PXL_Err_NO_MEMORY, .reports = 2}});
    for (const char* call : {"K_ZStringToUTF16String", "K_ReportError"}) {
      table.push_back({.call = call,
                       .nth = attempt,
                       .ways = {Way::ThrowsException},
                       .result = {.status = PXL_Err_NO_MEMORY, .reports = before + 1}});
      table.push_back({.call = call,
                       .nth = attempt,
                       .ways = {Way::ThrowsLong, Way::ThrowsText},
                       .result = {.status = PXL_Err_NO_MEMORY, .reports = before}});
      table.push_back({.call = call,
                       .nth = attempt,
                       .ways = {Way::ThrowsZero},
                       .result = {.status = PXL_Err_NONE, .reports = before}});
    }
  }
  return table;
}

Table UnmappingTable() {
  Table table;
  for (const char* call : {"UnmapMemory", "CloseFileHandleIfPossible"}) {
    table.push_back({.call = call,
                     .nth = 1,
                     .ways = {Way::ThrowsException},
                     .result = {.status = PXL_Err_NONE, .reports = 1}});
    table.push_back({.call = call,
                     .nth = 1,
                     .ways = {Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText},
                     .result = kSuccess});
  }
  return table;
}

const Table kStillPurged = {
    {.call = "LockPixels", .nth = 1, .ways = {Way::Fails}, .result = kSuccess}};

// The surface is updated; without a flag to set, a shortage is reported.
Table ReloadTable(Result withoutMemory) {
  return kStillPurged +
         Table{
             {.call = "UpdateGWorld",
              .nth = 1,
              .ways = {Way::Fails},
              .result = {.status = kLayerError, .reports = 1}},
             {.call = "UpdateGWorld", .nth = 1, .ways = {Way::MemoryFull}, .result = withoutMemory},
             {.call = "LockPixels",
              .nth = 2,
              .ways = {Way::Fails},
              .result = {.status = PXL_Err_PURGED, .reports = 1}}};
}

Table RefusedReloadTable(Result withoutMemory) {
  return Table{
      {.call = "LockPixels", .nth = 1, .ways = {Way::Fails}, .result = withoutMemory},
      {.call = "UpdateGWorld",
       .nth = 1,
       .ways = {Way::Fails},
       .result = {.status = kLayerError, .reports = 1}},
      {.call = "UpdateGWorld", .nth = 1, .ways = {Way::MemoryFull}, .result = withoutMemory}};
}

void MakePurgedWithoutMemory(OperationFixture& fixture) {
  Purged({{.call = "UpdateGWorld", .nth = 1, .way = Way::MemoryFull}})(fixture);
}

void MakePurgedAndLost(OperationFixture& fixture) {
  MakePurgedWithoutMemory(fixture);
  fixture.Script().updateLosesPixels = true;
}

void MakePurgedAndMoving(OperationFixture& fixture) {
  Purged()(fixture);
  fixture.Script().updateReplacesSurface = true;
}

void AddLocks(std::vector<Operation>& all) {
  const Step frame = World(64, 0);
  const Step surface = World(32, 0);
  const Step mapped = World(32, kMapped);
  all.push_back(On("LockOfAFrame", frame, Lock, kSuccess, {}));
  all.push_back(On("LockOfGeometryAlone", World(32, PXL_Flag_DEFERRED), Lock, kSuccess, {}));
  all.push_back(On("LockOfASurface", surface, Lock, kSuccess,
                   {{.call = "LockPixels",
                     .nth = 1,
                     .ways = {Way::Fails},
                     .result = {.status = PXL_Err_PURGED, .reports = 1}}}));
  all.push_back(On("AskingLockOfASurface", surface, LockAndAsk, kSuccess,
                   {{.call = "LockPixels", .nth = 1, .ways = {Way::Fails}, .result = kSuccess}}));
  all.push_back(On("SecondLockOfASurface", Locked(surface), Lock, kSuccess, {}));
  all.push_back(On("LockOfAMappedFile", mapped, Lock, kSuccess, kMapping)
                    .WithoutMoves()
                    .OrOfTwo({kMappingToldOnce}));
  all.push_back(On(
                    "LockOfAnUnmappableFile",
                    [mapped](OperationFixture& fixture) {
                      mapped(fixture);
                      fixture.circumstances = {
                          {.call = "GetAddress", .nth = 1, .way = Way::FailsFromHere}};
                    },
                    Lock, {.status = PXL_Err_NO_MEMORY, .reports = 2}, RefusedMappingTable())
                    .WithoutMoves()
                    .OrOfTwo({{.status = PXL_Err_NONE, .reports = 2}}));
  all.push_back(On("SecondLockOfAMappedFile", Locked(mapped), Lock, kSuccess, {}));
  all.push_back(On("SecondLockWithoutView", LockWithoutView, Lock,
                   {.status = PXL_Err_NO_MEMORY, .reports = 0}, {}));
  all.push_back(On("LockOfADeadWorld", MakeADeadWorld, Lock,
                   {.status = PXL_Err_INVALID, .reports = 1}, kDead));
}

void AddUnlocks(std::vector<Operation>& all) {
  const Step frame = World(64, 0);
  const Step mapped = World(32, kMapped);
  all.push_back(Unlocking("UnlockOfAFrame", Locked(frame), kSuccess, {}));
  all.push_back(Unlocking("UnlockOfASurface", Locked(World(32, 0)), kSuccess, {}));
  all.push_back(
      Unlocking("UnlockOfAMappedFile", Locked(mapped), kSuccess, UnmappingTable()).WithoutMoves());
  all.push_back(Unlocking("UnlockWithoutView", LockWithoutView, kSuccess, {}));
  all.push_back(Unlocking("UnlockTooMany", frame, {.status = PXL_Err_NONE, .reports = 1}, {}));
  all.push_back(Unlocking("UnlockOfADeadWorld", MakeADeadWorld,
                          {.status = PXL_Err_NONE, .reports = 1}, kDeadQuietly));
}

void AddLoadLocks(std::vector<Operation>& all) {
  const Result shortage = {.status = kLayerMemoryFull, .reports = 1};
  const Result quiet = kSuccess;
  // The surface that replaces the first one has no owner.
  const Result moved = {1, 2, Exit::Returns, 1};
  all.push_back(On("LoadLockOfAFrame", World(64, 0), LoadLock, kSuccess, {}));
  all.push_back(On("LoadLockOfAMappedFile", World(32, kMapped), LoadLockAndAsk, kSuccess, kMapping)
                    .WithoutMoves()
                    .OrOfTwo({kMappingToldOnce}));
  all.push_back(On("LoadLockOfASurface", World(32, 0), LoadLock, kSuccess,
                   {{.call = "LockPixels", .nth = 1, .ways = {Way::Fails}, .result = kSuccess}})
                    .OrOfTwo({{.status = kLayerError, .reports = 1}, shortage}));
  all.push_back(On("LoadLockOfPurgedPixels", Purged(), LoadLock, kSuccess, ReloadTable(shortage))
                    .OrOfTwo({{.status = kLayerMemoryFull, .reports = 0}}));
  all.push_back(
      On("AskingLoadLockOfPurgedPixels", Purged(), LoadLockAndAsk, kSuccess, ReloadTable(quiet)));
  all.push_back(On("LoadLockWithoutMemory", MakePurgedWithoutMemory, LoadLock, shortage,
                   RefusedReloadTable(shortage) + MemoryReportTable(kLayerMemoryFull, 3)));
  all.push_back(On("AskingLoadLockWithoutMemory", MakePurgedWithoutMemory, LoadLockAndAsk, quiet,
                   RefusedReloadTable(quiet)));
  all.push_back(
      On("LoadLockOfLostPixels", MakePurgedAndLost, LoadLock, shortage,
         RefusedReloadTable(shortage) +
             Table{{.call = "NewEmptyHandle", .nth = 1, .ways = {Way::Fails}, .result = shortage}} +
             MemoryReportTable(kLayerMemoryFull, 3)));
  all.push_back(On("LoadLockOfAMovingSurface", MakePurgedAndMoving, LoadLock, moved,
                   {{.call = "LockPixels", .nth = 1, .ways = {Way::Fails}, .result = moved},
                    {.call = "UpdateGWorld",
                     .nth = 1,
                     .ways = {Way::Fails, Way::MemoryFull},
                     .result = moved}}));
  all.push_back(On("LoadLockOfADeadWorld", MakeADeadWorld, LoadLock,
                   {.status = PXL_Err_INVALID, .reports = 1}, kDead));
}

}  // namespace

std::vector<Operation> LockOperations() {
  std::vector<Operation> all;
  AddLocks(all);
  AddUnlocks(all);
  AddLoadLocks(all);
  return all;
}
