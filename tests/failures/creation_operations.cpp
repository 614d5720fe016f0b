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

constexpr Rect kSmall = {3, 5, 7, 15};

std::string NameOf(const Wanted& wanted, Owner owner) {
  return wanted.path + std::to_string(wanted.depth) +
         (owner == Owner::Module ? "InItsOwnHandle" : "InTheCallersHandle");
}

std::int32_t Create(OperationFixture& fixture, const Wanted& wanted, Owner owner) {
  if (owner == Owner::Caller) {
    return PXL_NewWorld(nullptr, wanted.flags, &wanted.rect, wanted.depth, 0, fixture.worldH,
                        nullptr);
  }
  return PXL_NewWorld(nullptr, wanted.flags, &wanted.rect, wanted.depth, 0, nullptr, &fixture.outH);
}

Table HandleTable(Owner owner) {
  if (owner == Owner::Caller) return {};
  return {{.call = "K_AllocateHandleClear",
           .nth = 1,
           .ways = {Way::Fails},
           .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}}};
}

void Prepare(OperationFixture& fixture, const Rect& rect, Owner owner,
             const std::vector<Fault>& circumstances) {
  fixture.BeBorn();
  fixture.wanted = rect;
  if (owner == Owner::Caller) fixture.worldH = fixture.CallerHandle();
  fixture.Script().surfaceOfFailure = reinterpret_cast<GWorldPtr>(&fixture);
  fixture.circumstances = circumstances;
}

Operation Creation(const Wanted& wanted, Owner owner, Result result, const Table& table,
                   const std::vector<Fault>& circumstances = {}) {
  return {
      .name = NameOf(wanted, owner),
      .effect = Effect::Creates,
      .prepare =
          [=](OperationFixture& fixture) { Prepare(fixture, wanted.rect, owner, circumstances); },
      .run = [=](OperationFixture& fixture) { return Create(fixture, wanted, owner); },
      .result = result,
      .table = HandleTable(owner) + table};
}

const Table kFrameWithCode = {
    {.call = "K_PurgeLoop", .nth = 1, .ways = {Way::GivesCode}, .result = kSuccess}};

Table NewFrameTable(const std::string& allocator) {
  return SettingsTable() + FrameTable(allocator, PXL_Err_NO_MEMORY, 1) + kFrameWithCode;
}

// All attempts fail, and then something in the report of that.
Table NoFrameTable(const std::string& allocator) {
  const Table attempts = {{.call = "K_PurgeLoop",
                           .nth = 1,
                           .ways = {Way::GivesUp, Way::GivesNothing, Way::GivesCode},
                           .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
                          {.call = allocator,
                           .nth = 1,
                           .ways = {Way::Fails, Way::FailsFromHere},
                           .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
                          {.call = allocator,
                           .nth = 2,
                           .ways = {Way::Fails, Way::FailsFromHere},
                           .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}}};
  return SettingsTable() + attempts + MemoryReportTable(PXL_Err_NO_MEMORY, 3);
}

// A report is lost when anything but an exception is thrown in it.
const Result kLostReport = {.status = PXL_Err_NO_MEMORY, .reports = 0};
const Result kLostReportOfTheLayer = {.status = kLayerMemoryFull, .reports = 0};

const Table kSurface = {{.call = "NewGWorld",
                         .nth = 1,
                         .ways = {Way::Fails},
                         .result = {.status = kLayerError, .reports = 1}},
                        {.call = "NewGWorld",
                         .nth = 1,
                         .ways = {Way::MemoryFull},
                         .result = {.status = kLayerMemoryFull, .reports = 1}}};
const Table kSurfaceWithoutMap = {
    {.call = "GetPortPixMap", .nth = 1, .ways = {Way::NoMap}, .result = kSuccess}};

// The lock of the handle comes last before the provider is made.
Table MappedTable(Owner owner) {
  const int lastLock = owner == Owner::Module ? 1 : 2;
  return {{.call = "HLock",
           .nth = lastLock,
           .ways = {Way::NewProvider, Way::NewName, Way::NewNumberedName, Way::NewFile,
                    Way::NewInsideFile},
           .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
          {.call = "Init",
           .nth = 1,
           .ways = {Way::ThrowsException},
           .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
          {.call = "Init",
           .nth = 1,
           .ways = {Way::ThrowsLong, Way::ThrowsText},
           .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}},
          {.call = "Init", .nth = 1, .ways = {Way::ThrowsZero}, .result = kSuccess}};
}

// K translates the exception that it reports to code 0.
const Result kNoFailureAfterAll = {.status = PXL_Err_NONE, .reports = 1};

const Table kNoFile = {
    {.call = "Init",
     .nth = 1,
     .ways = {Way::ThrowsException},
     .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
    {.call = "Init",
     .nth = 1,
     .ways = {Way::ThrowsLong, Way::ThrowsText},
     .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}},
    {.call = "Init", .nth = 1, .ways = {Way::ThrowsZero}, .result = kSuccess},
    {.call = "K_TranslateAndReportException",
     .nth = 1,
     .ways = {Way::AnswersZero},
     .result = {.status = PXL_Err_NONE, .reports = 1}},
    {.call = "K_TranslateAndReportException",
     .nth = 1,
     .ways = {Way::ThrowsException, Way::ThrowsLong, Way::ThrowsZero, Way::ThrowsText},
     .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}}};

void AddFrames(std::vector<Operation>& all, Owner owner) {
  for (const std::int32_t depth : {32, 64, 128}) {
    const std::uint32_t flags = PXL_Flag_NO_PLATFORM | PXL_Flag_CLEAR;
    all.push_back(
        Creation({"AHeapFrame", depth, flags, kSmall}, owner, kSuccess, NewFrameTable("malloc"))
            .OrOfTwo({kLostReport}));
    all.push_back(Creation({"APoolFrame", depth, flags, RectOfThePool(depth)}, owner, kSuccess,
                           NewFrameTable("K_AllocateRecycledPtr"))
                      .OrOfTwo({kLostReport}));
    all.push_back(Creation({"ARefusedHeapFrame", depth, flags, kSmall}, owner,
                           {.status = PXL_Err_NO_MEMORY, .reports = 1}, NoFrameTable("malloc"),
                           {{.call = "malloc", .nth = 1, .way = Way::FailsFromHere}}));
    all.push_back(
        Creation({"ARefusedPoolFrame", depth, flags, RectOfThePool(depth)}, owner,
                 {.status = PXL_Err_NO_MEMORY, .reports = 1}, NoFrameTable("K_AllocateRecycledPtr"),
                 {{.call = "K_AllocateRecycledPtr", .nth = 1, .way = Way::FailsFromHere}}));
  }
}

void AddSurfaces(std::vector<Operation>& all, Owner owner) {
  for (const std::int32_t depth : {8, 32}) {
    all.push_back(Creation({"ASurface", depth, PXL_Flag_PURGEABLE, kSmall}, owner, kSuccess,
                           kSurface + kSurfaceWithoutMap)
                      .OrOfTwo({kLostReportOfTheLayer}));
    all.push_back(
        Creation({"AClearedSurface", depth, PXL_Flag_CLEAR, kSmall}, owner, kSuccess, kSurface)
            .OrOfTwo({kLostReportOfTheLayer}));
    all.push_back(Creation({"ARefusedSurface", depth, 0, kSmall}, owner,
                           {.status = kLayerError, .reports = 1}, kSurface,
                           {{.call = "NewGWorld", .nth = 1, .way = Way::Fails}})
                      .OrOfTwo({kLostReportOfTheLayer}));
    all.push_back(Creation({"ASurfaceWithoutMemory", depth, 0, kSmall}, owner,
                           {.status = kLayerMemoryFull, .reports = 1},
                           kSurface + MemoryReportTable(kLayerMemoryFull, 3),
                           {{.call = "NewGWorld", .nth = 1, .way = Way::MemoryFull}}));
  }
}

void AddDeferred(std::vector<Operation>& all, Owner owner) {
  const std::uint32_t mapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;
  for (const std::int32_t depth : {8, 32, 64, 128}) {
    all.push_back(
        Creation({"GeometryAlone", depth, PXL_Flag_DEFERRED, kSmall}, owner, kSuccess, Table{}));
    all.push_back(
        Creation({"AMappedFile", depth, mapped, kSmall}, owner, kSuccess, MappedTable(owner))
            .OrOfTwo({kNoFailureAfterAll}));
    all.push_back(Creation({"ARefusedMappedFile", depth, mapped, kSmall}, owner,
                           {.status = PXL_Err_NO_MEMORY, .reports = 1}, kNoFile,
                           {{.call = "Init", .nth = 1, .way = Way::ThrowsException}}));
  }
}

// Sizes that no frame can have. A row of more than 32766 pixels, more than
// 2 GiB, a negative height.
void AddImpossibleSizes(std::vector<Operation>& all, Owner owner) {
  const Rect wide = {0, -20000, 4, 20000};
  const Rect huge = {0, 0, 20000, 32766};
  const Rect upsideDown = {5, 0, 0, 10};
  const Table tooLarge = MemoryReportTable(PXL_Err_NO_MEMORY, 4);
  for (const std::uint32_t flags :
       {0U, unsigned{PXL_Flag_DEFERRED}, unsigned{PXL_Flag_DEFERRED | PXL_Flag_MAPPED}}) {
    const std::string how = "WithFlags" + std::to_string(flags) + "At";
    all.push_back(Creation({"TooWide" + how, 64, flags, wide}, owner,
                           {.status = PXL_Err_REFUSED, .reports = 1}, Table{}));
    all.push_back(Creation({"TooLarge" + how, 128, flags, huge}, owner,
                           {.status = PXL_Err_NO_MEMORY, .reports = 1}, tooLarge));
    all.push_back(Creation({"UpsideDown" + how, 64, flags, upsideDown}, owner,
                           {.status = PXL_Err_NO_MEMORY, .reports = 1}, tooLarge));
  }
  all.push_back(Creation({"AFrameOf", 8, PXL_Flag_NO_PLATFORM, kSmall}, owner,
                         {.status = PXL_Err_REFUSED, .reports = 1}, Table{}));
}

// Depth and size of a parent, by each path.
void AddChildren(std::vector<Operation>& all, Owner owner) {
  const auto add = [&](const std::string& name, std::int32_t depth, std::uint32_t flags,
                       const Table& table, const Result& ofTwo) {
    const std::string where = owner == Owner::Module ? "InItsOwnHandle" : "InTheCallersHandle";
    all.push_back(Operation{
        .name = name + where,
        .effect = Effect::Creates,
        .prepare =
            [=](OperationFixture& fixture) {
              Prepare(fixture, {0, 0, 4, 10}, owner, {});
              fixture.otherH = fixture.Make(depth, kSmall, PXL_Flag_NO_PLATFORM);
            },
        .run =
            [=](OperationFixture& fixture) {
              const bool own = owner == Owner::Module;
              return PXL_NewWorld(fixture.otherH, flags, nullptr, PXL_Depth_SHARE, 0,
                                  own ? nullptr : fixture.worldH, own ? &fixture.outH : nullptr);
            },
        .result = kSuccess,
        .table = HandleTable(owner) + table}
                      .OrOfTwo({ofTwo}));
  };
  const Table frame = FrameTable("malloc", PXL_Err_NO_MEMORY, 1) + kFrameWithCode;
  add("AChildsFrame", 64, 0, frame, kLostReport);
  add("AChildsSurface", 32, 0, kSurface + kSurfaceWithoutMap, kLostReportOfTheLayer);
  add("AChildsGeometry", 128, PXL_Flag_DEFERRED, {}, kLostReport);
}

using Refused = std::function<std::int32_t(OperationFixture&)>;

Operation Refusal(const std::string& name, Effect effect, bool born, Result result,
                  const Table& table, const Refused& run) {
  return {.name = name,
          .effect = effect,
          .prepare =
              [born](OperationFixture& fixture) {
                if (born) fixture.BeBorn();
              },
          .run = run,
          .result = result,
          .table = table};
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
  const Table empty = {{.call = "Kp_ReportQuexErrString",
                        .nth = 1,
                        .ways = {Way::Answers99},
                        .result = {.status = 99, .reports = 1}}};
  return {
      Refusal("BeforeBirth", Effect::Refuses, false, {.status = PXL_Err_INVALID, .reports = 1}, {},
              [](OperationFixture& fixture) {
                return PXL_NewWorld(nullptr, 0, &kSmall, 32, 0, nullptr, &fixture.outH);
              }),
      Refusal("WithoutAPlaceForTheHandle", Effect::Refuses, true,
              {.status = PXL_Err_REFUSED, .reports = 1}, empty,
              [](OperationFixture&) {
                return PXL_NewWorld(nullptr, 0, &kSmall, 32, 0, nullptr, nullptr);
              }),
      Refusal("WithFlagsThatDeepWorldsRefuse", Effect::Refuses, true,
              {.status = PXL_Err_REFUSED, .reports = 1}, empty,
              [](OperationFixture& fixture) {
                return PXL_NewWorld(nullptr, PXL_Flag_ALT_ORDER, &kSmall, 64, 0, nullptr,
                                    &fixture.outH);
              }),
      Refusal(
          "WithNothingToShare", Effect::Creates, true, {.status = PXL_Err_REFUSED, .reports = 2},
          {{.call = "K_AllocateHandleClear",
            .nth = 1,
            .ways = {Way::Fails},
            .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}}},
          [](OperationFixture& fixture) {
            return PXL_NewWorld(nullptr, 0, nullptr, PXL_Depth_SHARE, 0, nullptr, &fixture.outH);
          }),
  };
}
