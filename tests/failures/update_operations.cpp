// Updates, by each path.
#include "tests/failures/operation.h"

namespace {

constexpr Rect SMALL = {0, 0, 4, 10};
constexpr Rect TALLER = {2, 2, 20, 12};

using Step = std::function<void(Bench&)>;

Step World(std::int32_t depth, const Rect& rect, std::uint32_t flags,
           const std::vector<Fault>& circumstances = {}) {
  return [=](Bench& bench) {
    bench.BeBorn();
    bench.worldH = bench.Make(depth, rect, flags);
    bench.circumstances = circumstances;
  };
}

Operation Update(const std::string& name, const Step& prepare, std::int32_t depth, const Rect& rect,
                 Result result, const Table& table) {
  return {"UpdateOf" + name,
          Effect::Updates,
          [=](Bench& bench) {
            prepare(bench);
            bench.wanted = rect;
          },
          [=](Bench& bench) { return PXL_UpdateWorld(depth, &rect, 0, nullptr, bench.worldH); },
          result,
          table};
}

// A new frame that comes with a code is lost when the next takes its place.
const Result WITH_CODE = {9, 0, Exit::Returns, 1};

Table ResizeTable(const std::string& allocator) {
  return FrameTable(allocator, 4, 1) + Table{{"K_PurgeLoop", 1, {Way::GivesCode}, WITH_CODE}};
}

// The new frame was refused; the frame of the old size may be as well.
Table FallbackTable(const std::string& allocator) {
  return Table{{"K_PurgeLoop", 1, {Way::GivesUp, Way::GivesNothing}, {4, 1}},
               {"K_PurgeLoop", 1, {Way::GivesCode}, WITH_CODE},
               {"K_PurgeLoop", 2, {Way::GivesUp, Way::GivesNothing, Way::GivesCode}, {4, 1}},
               {allocator, 1, {Way::Fails, Way::FailsFromHere}, {4, 1}}} +
         MemoryReportTable(4, 3);
}

// Neither size is to be had.
Table LossTable(const std::string& allocator) {
  Table table = MemoryReportTable(4, 3);
  for (int nth = 1; nth <= 4; ++nth) {
    table.push_back({allocator, nth, {Way::Fails, Way::FailsFromHere}, {4, 1}});
  }
  table.push_back({"K_PurgeLoop", 1, {Way::GivesUp, Way::GivesNothing, Way::GivesCode}, {4, 1}});
  table.push_back({"K_PurgeLoop", 2, {Way::GivesUp, Way::GivesNothing, Way::GivesCode}, {4, 1}});
  return table;
}

struct Sizes {
  Rect before;
  Rect after;
};

void AddFrames(std::vector<Operation>& all, const std::string& kind,
               const std::function<Sizes(std::int32_t depth)>& sizes,
               const std::string& allocator) {
  const std::vector<Fault> refused = {{"K_PurgeLoop", 1, Way::GivesUp}};
  const std::vector<Fault> nothing = {{allocator, 1, Way::FailsFromHere}};
  for (const std::int32_t depth : {32, 64, 128}) {
    const std::string name = kind + std::to_string(depth);
    const std::uint32_t flags = PXL_Flag_NO_PLATFORM;
    const auto [before, after] = sizes(depth);
    all.push_back(
        Update(name, World(depth, before, flags), 0, after, {0, 0}, ResizeTable(allocator))
            .OrOfTwo({{4, 0}}));
    all.push_back(Update("ARefused" + name, World(depth, before, flags, refused), 0, after, {4, 1},
                         FallbackTable(allocator)));
    all.push_back(Update("ALost" + name, World(depth, before, flags, nothing), 0, after, {4, 1},
                         LossTable(allocator)));
  }
}

void AddSurfaces(std::vector<Operation>& all) {
  const Table layer = {{"UpdateGWorld", 1, {Way::Fails}, {-50, 1}},
                       {"UpdateGWorld", 1, {Way::MemoryFull}, {-108, 1}}};
  const Result lostReport = {-108, 0};
  for (const std::int32_t depth : {8, 32}) {
    const std::string name = std::to_string(depth);
    all.push_back(Update("ASurface" + name, World(depth, SMALL, 0), 0, TALLER, {0, 0}, layer)
                      .OrOfTwo({lostReport}));
    all.push_back(
        Update("ASurfaceToDepth" + name, World(40 - depth, SMALL, 0), depth, TALLER, {0, 0}, layer)
            .OrOfTwo({lostReport}));
    all.push_back(Update("ARefusedSurface" + name,
                         World(depth, SMALL, 0, {{"UpdateGWorld", 1, Way::Fails}}), 0, TALLER,
                         {-50, 1}, layer)
                      .OrOfTwo({lostReport}));
    all.push_back(Update("ASurfaceWithoutMemory" + name,
                         World(depth, SMALL, 0, {{"UpdateGWorld", 1, Way::MemoryFull}}), 0, TALLER,
                         {-108, 1}, layer + MemoryReportTable(-108, 3)));
  }
}

void AddRefusals(std::vector<Operation>& all) {
  const Step frame = World(64, SMALL, 0);
  const auto locked = [frame](Bench& bench) {
    frame(bench);
    PXL_LockPixels(0, bench.worldH, nullptr);
  };
  const auto dead = [](Bench& bench) {
    bench.BeBorn();
    bench.worldH = bench.CallerHandle();
  };
  all.push_back(Update("ALockedWorld", locked, 0, TALLER, {3, 1}, {}));
  all.push_back(Update("ADeadWorld", dead, 0, TALLER, {2, 1},
                       {{"Kp_ReportQuexErrString", 1, {Way::Answers99}, {99, 1}}}));
  all.push_back(Update("AFrameToAnotherDepth", frame, 32, TALLER, {3, 1}, {}));
  all.push_back(Update("AFrameTooWide", frame, 0, {0, -20000, 4, 20000}, {3, 1}, {}));
  all.push_back(
      Update("AFrameUpsideDown", frame, 0, {5, 0, 0, 10}, {4, 1}, MemoryReportTable(4, 4)));
  all.push_back(Update("AFrameOfTheSameSize", frame, 0, {1, 1, 5, 11}, {0, 0}, {}));
  all.push_back(
      Update("GeometryAlone", World(32, SMALL, PXL_Flag_DEFERRED), 0, TALLER, {0, 0}, {}));
}

}  // namespace

std::vector<Operation> UpdateOperations() {
  std::vector<Operation> all;
  const auto small = [](std::int32_t) -> Sizes { return {SMALL, TALLER}; };
  AddFrames(all, "AHeapFrame", small, "malloc");
  const auto large = [](std::int32_t depth) -> Sizes {
    return {RectOfThePool(depth), RectOfThePool(depth, 10)};
  };
  AddFrames(all, "APoolFrame", large, "K_AllocateRecycledPtr");
  AddSurfaces(all);
  AddRefusals(all);
  return all;
}
