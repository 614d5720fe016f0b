// Updates, by each path.
#include "tests/failures/operation.h"

namespace {

constexpr Rect kSmall = {0, 0, 4, 10};
constexpr Rect kTaller = {2, 2, 20, 12};

using Step = std::function<void(OperationFixture&)>;

Step World(std::int32_t depth, const Rect& rect, std::uint32_t flags,
           const std::vector<Fault>& circumstances = {}) {
  return [=](OperationFixture& fixture) {
    fixture.BeBorn();
    fixture.worldH = fixture.Make(depth, rect, flags);
    fixture.circumstances = circumstances;
  };
}

Operation Update(const std::string& name, const Step& prepare, std::int32_t depth, const Rect& rect,
                 Result result, const Table& table) {
  return {.name = "UpdateOf" + name,
          .effect = Effect::Updates,
          .prepare =
              [=](OperationFixture& fixture) {
                prepare(fixture);
                fixture.wanted = rect;
              },
          .run =
              [=](OperationFixture& fixture) {
                return PXL_UpdateWorld(depth, &rect, 0, nullptr, fixture.worldH);
              },
          .result = result,
          .table = table};
}

// A new frame that comes with a code is lost when the next takes its place.
const Result kWithCode = {.status = 9, .reports = 0, .exit = Exit::Returns, .lost = 1};

Table ResizeTable(const std::string& allocator) {
  return FrameTable(allocator, PXL_Err_NO_MEMORY, 1) +
         Table{{.call = "K_PurgeLoop", .nth = 1, .ways = {Way::GivesCode}, .result = kWithCode}};
}

// The new frame was refused; the frame of the old size may be as well.
Table FallbackTable(const std::string& allocator) {
  return Table{{.call = "K_PurgeLoop",
                .nth = 1,
                .ways = {Way::GivesUp, Way::GivesNothing},
                .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
               {.call = "K_PurgeLoop", .nth = 1, .ways = {Way::GivesCode}, .result = kWithCode},
               {.call = "K_PurgeLoop",
                .nth = 2,
                .ways = {Way::GivesUp, Way::GivesNothing, Way::GivesCode},
                .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
               {.call = allocator,
                .nth = 1,
                .ways = {Way::Fails, Way::FailsFromHere},
                .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}}} +
         MemoryReportTable(PXL_Err_NO_MEMORY, 3);
}

// There is no memory for either size.
Table LossTable(const std::string& allocator) {
  Table table = MemoryReportTable(PXL_Err_NO_MEMORY, 3);
  for (int nth = 1; nth <= 4; ++nth) {
    table.push_back({.call = allocator,
                     .nth = nth,
                     .ways = {Way::Fails, Way::FailsFromHere},
                     .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}});
  }
  table.push_back({.call = "K_PurgeLoop",
                   .nth = 1,
                   .ways = {Way::GivesUp, Way::GivesNothing, Way::GivesCode},
                   .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}});
  table.push_back({.call = "K_PurgeLoop",
                   .nth = 2,
                   .ways = {Way::GivesUp, Way::GivesNothing, Way::GivesCode},
                   .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}});
  return table;
}

struct Sizes {
  Rect before;
  Rect after;
};

void AddFrames(std::vector<Operation>& all, const std::string& kind,
               const std::function<Sizes(std::int32_t depth)>& sizes,
               const std::string& allocator) {
  const std::vector<Fault> refused = {{.call = "K_PurgeLoop", .nth = 1, .way = Way::GivesUp}};
  const std::vector<Fault> nothing = {{.call = allocator, .nth = 1, .way = Way::FailsFromHere}};
  for (const std::int32_t depth : {32, 64, 128}) {
    const std::string name = kind + std::to_string(depth);
    const std::uint32_t flags = PXL_Flag_NO_PLATFORM;
    const auto [before, after] = sizes(depth);
    all.push_back(
        Update(name, World(depth, before, flags), 0, after, kSuccess, ResizeTable(allocator))
            .OrOfTwo({{.status = PXL_Err_NO_MEMORY, .reports = 0}}));
    all.push_back(Update("ARefused" + name, World(depth, before, flags, refused), 0, after,
                         {.status = PXL_Err_NO_MEMORY, .reports = 1}, FallbackTable(allocator)));
    all.push_back(Update("ALost" + name, World(depth, before, flags, nothing), 0, after,
                         {.status = PXL_Err_NO_MEMORY, .reports = 1}, LossTable(allocator)));
  }
}

void AddSurfaces(std::vector<Operation>& all) {
  const Table layer = {{.call = "UpdateGWorld",
                        .nth = 1,
                        .ways = {Way::Fails},
                        .result = {.status = kLayerError, .reports = 1}},
                       {.call = "UpdateGWorld",
                        .nth = 1,
                        .ways = {Way::MemoryFull},
                        .result = {.status = kLayerMemoryFull, .reports = 1}}};
  const Result lostReport = {.status = kLayerMemoryFull, .reports = 0};
  for (const std::int32_t depth : {8, 32}) {
    const std::string name = std::to_string(depth);
    all.push_back(Update("ASurface" + name, World(depth, kSmall, 0), 0, kTaller, kSuccess, layer)
                      .OrOfTwo({lostReport}));
    all.push_back(Update("ASurfaceToDepth" + name, World(40 - depth, kSmall, 0), depth, kTaller,
                         kSuccess, layer)
                      .OrOfTwo({lostReport}));
    all.push_back(
        Update("ARefusedSurface" + name,
               World(depth, kSmall, 0, {{.call = "UpdateGWorld", .nth = 1, .way = Way::Fails}}), 0,
               kTaller, {.status = kLayerError, .reports = 1}, layer)
            .OrOfTwo({lostReport}));
    all.push_back(Update(
        "ASurfaceWithoutMemory" + name,
        World(depth, kSmall, 0, {{.call = "UpdateGWorld", .nth = 1, .way = Way::MemoryFull}}), 0,
        kTaller, {.status = kLayerMemoryFull, .reports = 1},
        layer + MemoryReportTable(kLayerMemoryFull, 3)));
  }
}

void AddRefusals(std::vector<Operation>& all) {
  const Step frame = World(64, kSmall, 0);
  const auto locked = [frame](OperationFixture& fixture) {
    frame(fixture);
    PXL_LockPixels(0, fixture.worldH, nullptr);
  };
  const auto dead = [](OperationFixture& fixture) {
    fixture.BeBorn();
    fixture.worldH = fixture.CallerHandle();
  };
  all.push_back(
      Update("ALockedWorld", locked, 0, kTaller, {.status = PXL_Err_REFUSED, .reports = 1}, {}));
  all.push_back(Update("ADeadWorld", dead, 0, kTaller, {.status = PXL_Err_INVALID, .reports = 1},
                       {{.call = "Kp_ReportQuexErrString",
                         .nth = 1,
                         .ways = {Way::Answers99},
                         .result = {.status = 99, .reports = 1}}}));
  all.push_back(Update("AFrameToAnotherDepth", frame, 32, kTaller,
                       {.status = PXL_Err_REFUSED, .reports = 1}, {}));
  all.push_back(Update("AFrameTooWide", frame, 0, {0, -20000, 4, 20000},
                       {.status = PXL_Err_REFUSED, .reports = 1}, {}));
  all.push_back(Update("AFrameUpsideDown", frame, 0, {5, 0, 0, 10},
                       {.status = PXL_Err_NO_MEMORY, .reports = 1},
                       MemoryReportTable(PXL_Err_NO_MEMORY, 4)));
  all.push_back(Update("AFrameOfTheSameSize", frame, 0, {1, 1, 5, 11}, kSuccess, {}));
  all.push_back(
      Update("GeometryAlone", World(32, kSmall, PXL_Flag_DEFERRED), 0, kTaller, kSuccess, {}));
}

}  // namespace

std::vector<Operation> UpdateOperations() {
  std::vector<Operation> all;
  AddFrames(
      all, "AHeapFrame",
      [](std::int32_t) {
        return Sizes{kSmall, kTaller};
      },
      "malloc");
  AddFrames(
      all, "APoolFrame",
      [](std::int32_t depth) {
        return Sizes{RectOfThePool(depth), RectOfThePool(depth, 10)};
      },
      "K_AllocateRecycledPtr");
  AddSurfaces(all);
  AddRefusals(all);
  return all;
}
