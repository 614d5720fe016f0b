// Everything else that imports something: frames, reports, birth and death,
// versions, clearing, blits and channel order.
#include "tests/failures/operation.h"

namespace {

constexpr Rect SMALL = {0, 0, 4, 10};

using Step = std::function<void(Bench&)>;
using Run = std::function<std::int32_t(Bench&)>;

Operation On(const std::string& name, const Step& prepare, const Run& run, Result result,
             const Table& table) {
  return {name, Effect::None, prepare, run, result, table};
}

void Unborn(Bench&) {
}

void Born(Bench& bench) {
  bench.BeBorn();
}

Step Pair(std::int32_t depth, std::int32_t otherDepth, const Rect& otherRect = SMALL) {
  return [=](Bench& bench) {
    bench.BeBorn();
    bench.worldH = bench.Make(depth, SMALL);
    bench.otherH = bench.Make(otherDepth, otherRect);
    PXL_LockPixels(0, bench.worldH, nullptr);
    PXL_LockPixels(0, bench.otherH, nullptr);
  };
}

Run Allocation(std::uint64_t size) {
  return [size](Bench& bench) {
    bench.frameSize = size;
    return PXL_AllocateFrameQuiet(size, 0, &bench.frame);
  };
}

Step Allocated(std::uint64_t size) {
  return [size](Bench& bench) { Allocation(size)(bench); };
}

std::int32_t Free(Bench& bench) {
  void* frame = bench.frame;
  bench.frame = nullptr;
  return PXL_FreeFrame(frame, bench.frameSize);
}

std::int32_t Blit(Bench& bench) {
  return PXL_Blit(bench.worldH, bench.otherH, nullptr, nullptr, 0);
}

Run Report(std::int32_t error, std::int16_t width, std::int16_t height) {
  return [=](Bench&) { return PXL_ReportWorldAllocationFailure(error, 0, width, height, 128); };
}

void AddFrames(std::vector<Operation>& all) {
  const Table withCode = {{"K_PurgeLoop", 1, {Way::GivesCode}, {9, 0}}};
  all.push_back(On("AllocationOnTheHeap", Born, Allocation(1000), {0, 0},
                   SettingsTable() + FrameTable("malloc", 4, 0) + withCode));
  all.push_back(On("AllocationInThePool", Born, Allocation(1000000), {0, 0},
                   SettingsTable() + FrameTable("K_AllocateRecycledPtr", 4, 0) + withCode));
  all.push_back(On("FreeingOnTheHeap", Allocated(1000), Free, {0, 0}, {}));
  all.push_back(On("FreeingInThePool", Allocated(1000000), Free, {0, 0}, {}));
}

void AddReports(std::vector<Operation>& all) {
  all.push_back(
      On("ReportOfAShortage", Unborn, Report(4, 100, 100), {0, 1}, MemoryReportTable(0, 3)));
  all.push_back(On("ReportOfAnImageOverTheLimit", Unborn, Report(-108, 32767, 32767), {0, 1},
                   MemoryReportTable(0, 4)));
  all.push_back(On("ReportOfAnotherError", Unborn, Report(-50, 100, 100), {0, 1}, {}));
  all.push_back(On("ReportOfNothing", Unborn, Report(0, 100, 100), {0, 0}, {}));
}

void AddLifeAndVersions(std::vector<Operation>& all) {
  const Table libraries = {{"K_CheckVersions", 1, {Way::Fails}, {7, 0}},
                           {"Q_CheckVersions", 1, {Way::Fails}, {7, 0}},
                           {"TXT_CheckVersions", 1, {Way::Fails}, {7, 0}}};
  const Table besides = {{"K_CheckVersions", 1, {Way::Fails}, {7, 1}},
                         {"Q_CheckVersions", 1, {Way::Fails}, {7, 1}},
                         {"TXT_CheckVersions", 1, {Way::Fails}, {7, 1}}};
  const auto birth = [](Bench&) { return PXL_Birth(0); };
  const auto death = [](Bench&) { return PXL_Death(); };
  all.push_back(On("Birth", Unborn, birth, {0, 0}, {}));
  all.push_back(On("SecondBirth", Born, birth, {0, 1}, {}));
  all.push_back(On("Death", Born, death, {0, 0}, {}));
  all.push_back(On("SecondDeath", Unborn, death, {2, 1}, {}));
  all.push_back(On(
      "VersionCheck", Unborn, [](Bench&) { return PXL_CheckVersions(1, 31); }, {0, 0}, libraries));
  all.push_back(On(
      "VersionMismatch", Unborn, [](Bench&) { return PXL_CheckVersions(1, 30); }, {7, 1}, besides));
}

void AddBlits(std::vector<Operation>& all) {
  for (const std::int32_t depth : {8, 32}) {
    all.push_back(On("BlitByTheLayer" + std::to_string(depth), Pair(depth, 32), Blit, {0, 0}, {}));
  }
  const std::int32_t deep[][2] = {{32, 64}, {32, 128}, {64, 32}, {64, 64}, {128, 32}, {128, 128}};
  for (const auto& [from, to] : deep) {
    const std::string name = std::to_string(from) + "To" + std::to_string(to);
    all.push_back(On("Blit" + name, Pair(from, to), Blit, {0, 0}, {}));
    all.push_back(On("BlitOfUnequalSizes" + name, Pair(from, to, {0, 0, 4, 11}), Blit, {3, 1}, {}));
  }
  const std::int32_t unhandled[][2] = {{64, 128}, {128, 64}, {8, 64}, {128, 8}};
  for (const auto& [from, to] : unhandled) {
    const std::string name = std::to_string(from) + "To" + std::to_string(to);
    all.push_back(On("UnhandledBlit" + name, Pair(from, to), Blit, {0, 1}, {}));
  }
}

std::int32_t GetOrder(Bench& bench) {
  std::uint32_t order = 0;
  return PXL_GetChannelOrder(bench.worldH, &order);
}

std::int32_t SetOrder(Bench& bench) {
  return PXL_SetChannelOrder(bench.worldH, PXL_ChannelOrder_ALTERNATE);
}

std::int32_t Clear(Bench& bench) {
  return PXL_ClearWorldToLong(bench.worldH, 0x01020304);
}

Step World(std::int32_t depth, std::uint32_t flags) {
  return [=](Bench& bench) {
    bench.BeBorn();
    bench.worldH = bench.Make(depth, SMALL, flags);
  };
}

void AddPixels(std::vector<Operation>& all) {
  const Step surface = World(32, 0);
  const Step frame = World(32, PXL_Flag_NO_PLATFORM);
  all.push_back(On("GettingTheOrderOfASurface", surface, GetOrder, {0, 0},
                   {{"QDE_GetGWorld32PixmapFormat", 1, {Way::Fails}, {-50, 0}}}));
  all.push_back(On("SettingTheOrderOfASurface", surface, SetOrder, {0, 0},
                   {{"QDE_SetGWorld32PixmapFormat", 1, {Way::Fails}, {-50, 0}}}));
  all.push_back(On("GettingTheOrderOfAFrame", frame, GetOrder, {0, 0}, {}));
  all.push_back(On("SettingTheOrderOfAFrame", frame, SetOrder, {0, 0}, {}));
  all.push_back(On("SettingTheOrderOfADeepWorld", World(64, 0), SetOrder, {3, 1}, {}));
  all.push_back(On("AssumingAnOrder", frame,
                   [](Bench& bench) { return PXL_AssumeChannelOrder(bench.worldH, 1); }, {0, 0},
                   {}));
  all.push_back(On("AskingForAnOrder", surface,
                   [](Bench& bench) { return PXL_CanSetChannelOrder(bench.worldH, &bench.flag); },
                   {0, 0}, {}));
  all.push_back(
      On("AskingForTheAddressOfASurface", surface,
         [](Bench& bench) { return PXLp_GetPixBaseAddr(bench.worldH) != nullptr ? 0 : 1; }, {0, 0},
         {}));
  all.push_back(On("ClearingOfASurfaceToZeros", surface,
                   [](Bench& bench) { return PXL_ClearWorldToZeros(bench.worldH); }, {0, 0}, {}));
  all.push_back(On("ClearingOfASurface", surface, Clear, {0, 0}, {}));
  all.push_back(On("ClearingOfAFrame", frame, Clear, {0, 0}, {}));
  all.push_back(On("ClearingOfNothing", World(32, PXL_Flag_DEFERRED), Clear, {0, 0}, {}));
}

}  // namespace

std::vector<Operation> OtherOperations() {
  std::vector<Operation> all;
  AddFrames(all);
  AddReports(all);
  AddLifeAndVersions(all);
  AddBlits(all);
  AddPixels(all);
  return all;
}
