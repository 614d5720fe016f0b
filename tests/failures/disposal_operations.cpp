// Disposal, of each kind of World.
#include "tests/failures/operation.h"

namespace {

constexpr Rect SMALL = {0, 0, 4, 10};
constexpr std::uint32_t MAPPED = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

Operation Disposal(const std::string& name, const std::function<void(Bench&)>& make,
                   const Table& table) {
  return {name,
          Effect::Disposes,
          [make](Bench& bench) {
            bench.BeBorn();
            make(bench);
            bench.provider = Bench::Record(bench.worldH).pixels.provider;
          },
          [](Bench& bench) { return PXL_DisposeWorld(bench.worldH); },
          {0, 0},
          table};
}

std::function<void(Bench&)> World(std::int32_t depth, const Rect& rect, std::uint32_t flags) {
  return [=](Bench& bench) { bench.worldH = bench.Make(depth, rect, flags); };
}

void MakeInTheCallersHandle(Bench& bench) {
  bench.worldH = bench.CallerHandle();
  PXL_NewWorld(nullptr, PXL_Flag_NO_PLATFORM, &SMALL, 32, 0, bench.worldH, nullptr);
}

void MakeLockedAndMapped(Bench& bench) {
  bench.worldH = bench.Make(32, SMALL, MAPPED);
  PXL_LockPixels(0, bench.worldH, nullptr);
}

Operation DisposalOfADeadWorld() {
  return {"ADeadWorld",
          Effect::None,
          [](Bench& bench) {
            bench.BeBorn();
            MakeInTheCallersHandle(bench);
            PXL_DisposeWorld(bench.worldH);
          },
          [](Bench& bench) { return PXL_DisposeWorld(bench.worldH); },
          {2, 1},
          {{"Kp_ReportQuexErrString", 1, {Way::Answers99}, {99, 1}}}};
}

}  // namespace

std::vector<Operation> DisposalOperations() {
  const Table reset = {{"Reset", 1, {Way::ThrowsException}, {4, 1}},
                       {"Reset", 1, {Way::ThrowsLong, Way::ThrowsText}, {4, 0}},
                       {"Reset", 1, {Way::ThrowsZero}, {0, 0}}};
  // K makes nothing of the exception that it reports.
  const Result released = {0, 1};
  return {Disposal("AHeapFrame", World(64, SMALL, 0), {}),
          Disposal("APoolFrame", World(128, RectOfThePool(128), 0), {}),
          Disposal("ASurface", World(32, SMALL, 0), {}),
          Disposal("GeometryAlone", World(32, SMALL, PXL_Flag_DEFERRED), {}),
          Disposal("AFrameInTheCallersHandle", MakeInTheCallersHandle, {}),
          Disposal("AMappedFile", World(128, SMALL, MAPPED), reset).OrOfTwo({released}),
          Disposal("ALockedMappedFile", MakeLockedAndMapped, reset).OrOfTwo({released}),
          DisposalOfADeadWorld()};
}
