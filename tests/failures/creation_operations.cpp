// The creation of Worlds, by each path, at each depth, in each kind of handle.
#include "tests/failures/operation.h"

namespace {

enum class Owner { Module, Caller };

struct Wanted {
  std::string path;
  std::int32_t depth;
  std::uint32_t flags;
  Rect rect;
};

constexpr Rect SMALL = {3, 5, 7, 15};

std::string NameOf(const Wanted& wanted, Owner owner) {
  return wanted.path + std::to_string(wanted.depth) +
         (owner == Owner::Module ? "InItsOwnHandle" : "InTheCallersHandle");
}

std::int32_t Create(Bench& bench, const Wanted& wanted, Owner owner) {
  if (owner == Owner::Caller) {
    return PXL_NewWorld(nullptr, wanted.flags, &wanted.rect, wanted.depth, 0, bench.worldH,
                        nullptr);
  }
  return PXL_NewWorld(nullptr, wanted.flags, &wanted.rect, wanted.depth, 0, nullptr, &bench.outH);
}

Table HandleTable(Owner owner) {
  if (owner == Owner::Caller) return {};
  return {{"K_AllocateHandleClear", 1, {Way::Fails}, {4, 0}}};
}

void Prepare(Bench& bench, const Rect& rect, Owner owner, const std::vector<Fault>& circumstances) {
  bench.BeBorn();
  bench.wanted = rect;
  if (owner == Owner::Caller) bench.worldH = bench.CallerHandle();
  bench.Script().surfaceOfFailure = reinterpret_cast<GWorldPtr>(&bench);
  bench.circumstances = circumstances;
}

Operation Creation(const Wanted& wanted, Owner owner, Result result, const Table& table,
                   const std::vector<Fault>& circumstances = {}) {
  return {NameOf(wanted, owner),
          Effect::Creates,
          [=](Bench& bench) { Prepare(bench, wanted.rect, owner, circumstances); },
          [=](Bench& bench) { return Create(bench, wanted, owner); },
          result,
          HandleTable(owner) + table};
}

const Table FRAME_WITH_CODE = {{"K_PurgeLoop", 1, {Way::GivesCode}, {0, 0}}};

Table NewFrameTable(const std::string& allocator) {
  return SettingsTable() + FrameTable(allocator, 4, 1) + FRAME_WITH_CODE;
}

// All attempts fail, and then something in the report of that.
Table NoFrameTable(const std::string& allocator) {
  const Table attempts = {
      {"K_PurgeLoop", 1, {Way::GivesUp, Way::GivesNothing, Way::GivesCode}, {4, 1}},
      {allocator, 1, {Way::Fails, Way::FailsFromHere}, {4, 1}},
      {allocator, 2, {Way::Fails, Way::FailsFromHere}, {4, 1}}};
  return SettingsTable() + attempts + MemoryReportTable(4, 3);
}

// What is thrown in a report, and no exception, loses it.
const Result LOST_REPORT = {4, 0};
const Result LOST_REPORT_OF_THE_LAYER = {-108, 0};

const Table SURFACE = {{"NewGWorld", 1, {Way::Fails}, {-50, 1}},
                       {"NewGWorld", 1, {Way::MemoryFull}, {-108, 1}}};
const Table SURFACE_WITHOUT_MAP = {{"GetPortPixMap", 1, {Way::NoMap}, {0, 0}}};

// The lock of the handle comes last before the provider is made.
Table MappedTable(Owner owner) {
  const int lastLock = owner == Owner::Module ? 1 : 2;
  return {{"HLock",
           lastLock,
           {Way::NewProvider, Way::NewName, Way::NewNumberedName, Way::NewFile, Way::NewInsideFile},
           {4, 1}},
          {"Init", 1, {Way::ThrowsException}, {4, 1}},
          {"Init", 1, {Way::ThrowsLong, Way::ThrowsText}, {4, 0}},
          {"Init", 1, {Way::ThrowsZero}, {0, 0}}};
}

// K makes nothing of the exception that it reports.
const Result NO_FAILURE_AFTER_ALL = {0, 1};

const Table NO_FILE = {{"Init", 1, {Way::ThrowsException}, {4, 1}},
                       {"Init", 1, {Way::ThrowsLong, Way::ThrowsText}, {4, 0}},
                       {"Init", 1, {Way::ThrowsZero}, {0, 0}},
                       {"K_TranslateAndReportException", 1, {Way::AnswersZero}, {0, 1}},
                       {"K_TranslateAndReportException",
                        1,
                        {Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText},
                        {4, 0}}};

void AddFrames(std::vector<Operation>& all, Owner owner) {
  for (const std::int32_t depth : {32, 64, 128}) {
    const std::uint32_t flags = PXL_Flag_NO_PLATFORM | PXL_Flag_CLEAR;
    all.push_back(
        Creation({"AHeapFrame", depth, flags, SMALL}, owner, {0, 0}, NewFrameTable("malloc"))
            .OrOfTwo({LOST_REPORT}));
    all.push_back(Creation({"APoolFrame", depth, flags, RectOfThePool(depth)}, owner, {0, 0},
                           NewFrameTable("K_AllocateRecycledPtr"))
                      .OrOfTwo({LOST_REPORT}));
    all.push_back(Creation({"ARefusedHeapFrame", depth, flags, SMALL}, owner, {4, 1},
                           NoFrameTable("malloc"), {{"malloc", 1, Way::FailsFromHere}}));
    all.push_back(Creation({"ARefusedPoolFrame", depth, flags, RectOfThePool(depth)}, owner, {4, 1},
                           NoFrameTable("K_AllocateRecycledPtr"),
                           {{"K_AllocateRecycledPtr", 1, Way::FailsFromHere}}));
  }
}

void AddSurfaces(std::vector<Operation>& all, Owner owner) {
  for (const std::int32_t depth : {8, 32}) {
    all.push_back(Creation({"ASurface", depth, PXL_Flag_PURGEABLE, SMALL}, owner, {0, 0},
                           SURFACE + SURFACE_WITHOUT_MAP)
                      .OrOfTwo({LOST_REPORT_OF_THE_LAYER}));
    all.push_back(
        Creation({"AClearedSurface", depth, PXL_Flag_CLEAR, SMALL}, owner, {0, 0}, SURFACE)
            .OrOfTwo({LOST_REPORT_OF_THE_LAYER}));
    all.push_back(Creation({"ARefusedSurface", depth, 0, SMALL}, owner, {-50, 1}, SURFACE,
                           {{"NewGWorld", 1, Way::Fails}})
                      .OrOfTwo({LOST_REPORT_OF_THE_LAYER}));
    all.push_back(Creation({"ASurfaceWithoutMemory", depth, 0, SMALL}, owner, {-108, 1},
                           SURFACE + MemoryReportTable(-108, 3),
                           {{"NewGWorld", 1, Way::MemoryFull}}));
  }
}

void AddDeferred(std::vector<Operation>& all, Owner owner) {
  const std::uint32_t mapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;
  for (const std::int32_t depth : {8, 32, 64, 128}) {
    all.push_back(
        Creation({"GeometryAlone", depth, PXL_Flag_DEFERRED, SMALL}, owner, {0, 0}, Table{}));
    all.push_back(Creation({"AMappedFile", depth, mapped, SMALL}, owner, {0, 0}, MappedTable(owner))
                      .OrOfTwo({NO_FAILURE_AFTER_ALL}));
    all.push_back(Creation({"ARefusedMappedFile", depth, mapped, SMALL}, owner, {4, 1}, NO_FILE,
                           {{"Init", 1, Way::ThrowsException}}));
  }
}

// Sizes that no frame can have. A row of more than 32766 pixels, more than
// 2 GiB, a negative height.
void AddImpossibleSizes(std::vector<Operation>& all, Owner owner) {
  const Rect wide = {0, -20000, 4, 20000};
  const Rect huge = {0, 0, 20000, 32766};
  const Rect upsideDown = {5, 0, 0, 10};
  const Table tooLarge = MemoryReportTable(4, 4);
  for (const std::uint32_t flags :
       {0U, unsigned{PXL_Flag_DEFERRED}, unsigned{PXL_Flag_DEFERRED | PXL_Flag_MAPPED}}) {
    const std::string how = "WithFlags" + std::to_string(flags) + "At";
    all.push_back(Creation({"TooWide" + how, 64, flags, wide}, owner, {3, 1}, Table{}));
    all.push_back(Creation({"TooLarge" + how, 128, flags, huge}, owner, {4, 1}, tooLarge));
    all.push_back(Creation({"UpsideDown" + how, 64, flags, upsideDown}, owner, {4, 1}, tooLarge));
  }
  all.push_back(Creation({"AFrameOf", 8, PXL_Flag_NO_PLATFORM, SMALL}, owner, {3, 1}, Table{}));
}

// Depth and size of a parent, by each path.
void AddChildren(std::vector<Operation>& all, Owner owner) {
  const auto add = [&](const std::string& name, std::int32_t depth, std::uint32_t flags,
                       const Table& table, const Result& ofTwo) {
    const std::string where = owner == Owner::Module ? "InItsOwnHandle" : "InTheCallersHandle";
    all.push_back(Operation{name + where,
                            Effect::Creates,
                            [=](Bench& bench) {
                              Prepare(bench, {0, 0, 4, 10}, owner, {});
                              bench.otherH = bench.Make(depth, SMALL, PXL_Flag_NO_PLATFORM);
                            },
                            [=](Bench& bench) {
                              const bool own = owner == Owner::Module;
                              return PXL_NewWorld(bench.otherH, flags, nullptr, PXL_Depth_SHARE, 0,
                                                  own ? nullptr : bench.worldH,
                                                  own ? &bench.outH : nullptr);
                            },
                            {0, 0},
                            HandleTable(owner) + table}
                      .OrOfTwo({ofTwo}));
  };
  const Table frame = FrameTable("malloc", 4, 1) + FRAME_WITH_CODE;
  add("AChildsFrame", 64, 0, frame, LOST_REPORT);
  add("AChildsSurface", 32, 0, SURFACE + SURFACE_WITHOUT_MAP, LOST_REPORT_OF_THE_LAYER);
  add("AChildsGeometry", 128, PXL_Flag_DEFERRED, {}, LOST_REPORT);
}

using Refused = std::function<std::int32_t(Bench&)>;

Operation Refusal(const std::string& name, Effect effect, bool born, Result result,
                  const Table& table, const Refused& run) {
  return {name,
          effect,
          [born](Bench& bench) {
            if (born) bench.BeBorn();
          },
          run,
          result,
          table};
}

}  // namespace

std::vector<Operation> CreationOperations() {
  std::vector<Operation> all;
  for (const Owner owner : {Owner::Module, Owner::Caller}) {
    AddFrames(all, owner);
    AddSurfaces(all, owner);
    AddDeferred(all, owner);
    AddChildren(all, owner);
    AddImpossibleSizes(all, owner);
  }
  return all;
}

std::vector<Operation> RefusedCreationOperations() {
  const Table empty = {{"Kp_ReportQuexErrString", 1, {Way::Answers99}, {99, 1}}};
  return {
      Refusal("BeforeBirth", Effect::Refuses, false, {2, 1}, {},
              [](Bench& bench) {
                return PXL_NewWorld(nullptr, 0, &SMALL, 32, 0, nullptr, &bench.outH);
              }),
      Refusal("WithoutAPlaceForTheHandle", Effect::Refuses, true, {3, 1}, empty,
              [](Bench&) { return PXL_NewWorld(nullptr, 0, &SMALL, 32, 0, nullptr, nullptr); }),
      Refusal("WithFlagsThatDeepWorldsRefuse", Effect::Refuses, true, {3, 1}, empty,
              [](Bench& bench) {
                return PXL_NewWorld(nullptr, PXL_Flag_ALT_ORDER, &SMALL, 64, 0, nullptr,
                                    &bench.outH);
              }),
      Refusal("WithNothingToShare", Effect::Creates, true, {3, 2},
              {{"K_AllocateHandleClear", 1, {Way::Fails}, {4, 0}}},
              [](Bench& bench) {
                return PXL_NewWorld(nullptr, 0, nullptr, PXL_Depth_SHARE, 0, nullptr, &bench.outH);
              }),
  };
}
