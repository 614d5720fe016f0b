// Locks and unlocks, with and without purged pixels.
#include "tests/failures/operation.h"

namespace {

constexpr Rect SMALL = {0, 0, 4, 10};
constexpr std::uint32_t MAPPED = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

using Step = std::function<void(Bench&)>;
using Run = std::function<std::int32_t(Bench&)>;

const Table DEAD = {{"Kp_ReportQuexErrString", 1, {Way::Answers99}, {99, 1}}};
const Table DEAD_QUIETLY = {{"Kp_ReportQuexErrString", 1, {Way::Answers99}, {0, 1}}};

std::int32_t Lock(Bench& bench) {
  return PXL_LockPixels(0, bench.worldH, nullptr);
}

std::int32_t LockAndAsk(Bench& bench) {
  return PXL_LockPixels(0, bench.worldH, &bench.flag);
}

std::int32_t Unlock(Bench& bench) {
  PXL_UnlockPixels(bench.worldH);
  return 0;
}

std::int32_t LoadLock(Bench& bench) {
  return PXL_LoadLockPixels(0, bench.worldH, nullptr, nullptr);
}

std::int32_t LoadLockAndAsk(Bench& bench) {
  return PXL_LoadLockPixels(0, bench.worldH, &bench.flag, nullptr);
}

Step World(std::int32_t depth, std::uint32_t flags) {
  return [=](Bench& bench) {
    bench.BeBorn();
    bench.worldH = bench.Make(depth, SMALL, flags);
  };
}

void MakeADeadWorld(Bench& bench) {
  bench.BeBorn();
  bench.worldH = bench.CallerHandle();
}

Step Locked(const Step& make) {
  return [make](Bench& bench) {
    make(bench);
    Lock(bench);
  };
}

Step Purged(const std::vector<Fault>& further = {}) {
  return [further](Bench& bench) {
    World(32, 0)(bench);
    bench.circumstances = further;
    bench.circumstances.push_back({"LockPixels", 1, Way::Fails});
  };
}

// Its only mapping attempts have failed.
void LockWithoutView(Bench& bench) {
  World(32, MAPPED)(bench);
  recorder::Current().Fail("GetAddress", 1);
  recorder::Current().Fail("GetAddress", 2);
  Lock(bench);
}

Operation On(const std::string& name, const Step& prepare, const Run& run, Result result,
             const Table& table) {
  return {name, Effect::Locks, prepare, run, result, table};
}

Operation Unlocking(const std::string& name, const Step& prepare, Result result,
                    const Table& table) {
  return {name, Effect::Unlocks, prepare, Unlock, result, table};
}

// Once one attempt has failed, the second counts as failed as well.
const Table MAPPING = {
    {"K_PurgeLoop", 1, {Way::GivesUp, Way::GivesNothing, Way::GivesCode}, {4, 0}},
    {"GetAddress",
     1,
     {Way::Fails, Way::FailsFromHere, Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero,
      Way::ThrowsText},
     {4, 2}}};

// One report is lost to what is thrown in it; K tells of an exception instead.
const Result MAPPING_TOLD_ONCE = {4, 1};

// What is thrown while the failure is reported ends the loop.
Table RefusedMappingTable() {
  Table table = {{"K_PurgeLoop", 1, {Way::GivesUp, Way::GivesNothing}, {4, 0}},
                 {"K_PurgeLoop", 1, {Way::GivesCode}, {4, 2}}};
  for (const int attempt : {1, 2}) {
    const int before = attempt - 1;
    table.push_back({"GetAddress",
                     attempt,
                     {Way::Fails, Way::FailsFromHere, Way::ThrowsException, Way::ThrowsLong,
                      Way::ThrowsZero, Way::ThrowsText},
                     {4, 2}});
    for (const char* call : {"K_ZStringToUTF16String", "K_ReportError"}) {
      table.push_back({call, attempt, {Way::ThrowsException}, {4, before + 1}});
      table.push_back({call, attempt, {Way::ThrowsLong, Way::ThrowsText}, {4, before}});
      table.push_back({call, attempt, {Way::ThrowsZero}, {0, before}});
    }
  }
  return table;
}

Table UnmappingTable() {
  Table table;
  for (const char* call : {"UnmapMemory", "CloseFileHandleIfPossible"}) {
    table.push_back({call, 1, {Way::ThrowsException}, {0, 1}});
    table.push_back({call, 1, {Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText}, {0, 0}});
  }
  return table;
}

const Table STILL_PURGED = {{"LockPixels", 1, {Way::Fails}, {0, 0}}};

// The surface is updated; whoever does not ask gets a report of what is short.
Table ReloadTable(Result withoutMemory) {
  return STILL_PURGED + Table{{"UpdateGWorld", 1, {Way::Fails}, {-50, 1}},
                              {"UpdateGWorld", 1, {Way::MemoryFull}, withoutMemory},
                              {"LockPixels", 2, {Way::Fails}, {0x701, 1}}};
}

Table RefusedReloadTable(Result withoutMemory) {
  return Table{{"LockPixels", 1, {Way::Fails}, withoutMemory},
               {"UpdateGWorld", 1, {Way::Fails}, {-50, 1}},
               {"UpdateGWorld", 1, {Way::MemoryFull}, withoutMemory}};
}

void MakePurgedWithoutMemory(Bench& bench) {
  Purged({{"UpdateGWorld", 1, Way::MemoryFull}})(bench);
}

void MakePurgedAndLost(Bench& bench) {
  MakePurgedWithoutMemory(bench);
  bench.Script().updateLosesPixels = true;
}

void MakePurgedAndMoving(Bench& bench) {
  Purged()(bench);
  bench.Script().updateReplacesSurface = true;
}

void AddLocks(std::vector<Operation>& all) {
  const Step frame = World(64, 0);
  const Step surface = World(32, 0);
  const Step mapped = World(32, MAPPED);
  all.push_back(On("LockOfAFrame", frame, Lock, {0, 0}, {}));
  all.push_back(On("LockOfGeometryAlone", World(32, PXL_Flag_DEFERRED), Lock, {0, 0}, {}));
  all.push_back(
      On("LockOfASurface", surface, Lock, {0, 0}, {{"LockPixels", 1, {Way::Fails}, {0x701, 1}}}));
  all.push_back(On("AskingLockOfASurface", surface, LockAndAsk, {0, 0},
                   {{"LockPixels", 1, {Way::Fails}, {0, 0}}}));
  all.push_back(On("SecondLockOfASurface", Locked(surface), Lock, {0, 0}, {}));
  all.push_back(On("LockOfAMappedFile", mapped, Lock, {0, 0}, MAPPING)
                    .WithoutMoves()
                    .OrOfTwo({MAPPING_TOLD_ONCE}));
  all.push_back(On(
                    "LockOfAnUnmappableFile",
                    [mapped](Bench& bench) {
                      mapped(bench);
                      bench.circumstances = {{"GetAddress", 1, Way::FailsFromHere}};
                    },
                    Lock, {4, 2}, RefusedMappingTable())
                    .WithoutMoves()
                    .OrOfTwo({{0, 2}}));
  all.push_back(On("SecondLockOfAMappedFile", Locked(mapped), Lock, {0, 0}, {}));
  all.push_back(On("SecondLockWithoutView", LockWithoutView, Lock, {4, 0}, {}));
  all.push_back(On("LockOfADeadWorld", MakeADeadWorld, Lock, {2, 1}, DEAD));
}

void AddUnlocks(std::vector<Operation>& all) {
  const Step frame = World(64, 0);
  const Step mapped = World(32, MAPPED);
  all.push_back(Unlocking("UnlockOfAFrame", Locked(frame), {0, 0}, {}));
  all.push_back(Unlocking("UnlockOfASurface", Locked(World(32, 0)), {0, 0}, {}));
  all.push_back(
      Unlocking("UnlockOfAMappedFile", Locked(mapped), {0, 0}, UnmappingTable()).WithoutMoves());
  all.push_back(Unlocking("UnlockWithoutView", LockWithoutView, {0, 0}, {}));
  all.push_back(Unlocking("UnlockTooMany", frame, {0, 1}, {}));
  all.push_back(Unlocking("UnlockOfADeadWorld", MakeADeadWorld, {0, 1}, DEAD_QUIETLY));
}

void AddLoadLocks(std::vector<Operation>& all) {
  const Result shortage = {-108, 1};
  const Result quiet = {0, 0};
  // The surface that the layer puts into the other's place belongs to nobody.
  const Result moved = {1, 2, Exit::Returns, 1};
  all.push_back(On("LoadLockOfAFrame", World(64, 0), LoadLock, {0, 0}, {}));
  all.push_back(On("LoadLockOfAMappedFile", World(32, MAPPED), LoadLockAndAsk, {0, 0}, MAPPING)
                    .WithoutMoves()
                    .OrOfTwo({MAPPING_TOLD_ONCE}));
  all.push_back(On("LoadLockOfASurface", World(32, 0), LoadLock, {0, 0},
                   {{"LockPixels", 1, {Way::Fails}, {0, 0}}})
                    .OrOfTwo({{-50, 1}, shortage}));
  all.push_back(On("LoadLockOfPurgedPixels", Purged(), LoadLock, {0, 0}, ReloadTable(shortage))
                    .OrOfTwo({{-108, 0}}));
  all.push_back(
      On("AskingLoadLockOfPurgedPixels", Purged(), LoadLockAndAsk, {0, 0}, ReloadTable(quiet)));
  all.push_back(On("LoadLockWithoutMemory", MakePurgedWithoutMemory, LoadLock, shortage,
                   RefusedReloadTable(shortage) + MemoryReportTable(-108, 3)));
  all.push_back(On("AskingLoadLockWithoutMemory", MakePurgedWithoutMemory, LoadLockAndAsk, quiet,
                   RefusedReloadTable(quiet)));
  all.push_back(On("LoadLockOfLostPixels", MakePurgedAndLost, LoadLock, shortage,
                   RefusedReloadTable(shortage) +
                       Table{{"NewEmptyHandle", 1, {Way::Fails}, shortage}} +
                       MemoryReportTable(-108, 3)));
  all.push_back(On("LoadLockOfAMovingSurface", MakePurgedAndMoving, LoadLock, moved,
                   {{"LockPixels", 1, {Way::Fails}, moved},
                    {"UpdateGWorld", 1, {Way::Fails, Way::MemoryFull}, moved}}));
  all.push_back(On("LoadLockOfADeadWorld", MakeADeadWorld, LoadLock, {2, 1}, DEAD));
}

}  // namespace

std::vector<Operation> LockOperations() {
  std::vector<Operation> all;
  AddLocks(all);
  AddUnlocks(all);
  AddLoadLocks(all);
  return all;
}
