// Everything else that imports something: frames, reports, birth and death,
// versions, clearing, blits and channel order.
#include "tests/failures/operation.h"

namespace {

constexpr Rect kSmall = {0, 0, 4, 10};

using Step = std::function<void(OperationFixture&)>;
using Run = std::function<std::int32_t(OperationFixture&)>;

Operation On(const std::string& name, const Step& prepare, const Run& run, Result result,
             const Table& table) {
  return {.name = name,
          .effect = Effect::None,
          .prepare = prepare,
          .run = run,
          .result = result,
          .table = table};
}

void Unborn(OperationFixture&) {
}

void Born(OperationFixture& fixture) {
  fixture.BeBorn();
}

Step Pair(std::int32_t depth, std::int32_t otherDepth, const Rect& otherRect = kSmall) {
  return [=](OperationFixture& fixture) {
    fixture.BeBorn();
    fixture.worldH = fixture.Make(depth, kSmall);
    fixture.otherH = fixture.Make(otherDepth, otherRect);
    PXL_LockPixels(0, fixture.worldH, nullptr);
    PXL_LockPixels(0, fixture.otherH, nullptr);
  };
}

Run Allocation(std::uint64_t size) {
  return [size](OperationFixture& fixture) {
    fixture.frameSize = size;
    return PXL_AllocateFrameQuiet(size, 0, &fixture.frame);
  };
}

Step Allocated(std::uint64_t size) {
  return [size](OperationFixture& fixture) { Allocation(size)(fixture); };
}

std::int32_t Free(OperationFixture& fixture) {
  void* frame = fixture.frame;
  fixture.frame = nullptr;
  return PXL_FreeFrame(frame, fixture.frameSize);
}

std::int32_t Blit(OperationFixture& fixture) {
  return PXL_Blit(fixture.worldH, fixture.otherH, nullptr, nullptr, 0);
}

Run Report(std::int32_t error, std::int16_t width, std::int16_t height) {
  return [=](OperationFixture&) {
    return PXL_ReportWorldAllocationFailure(error, 0, width, height, 128);
  };
}

void AddFrames(std::vector<Operation>& all) {
  const Table withCode = {{.call = "K_PurgeLoop",
                           .nth = 1,
                           .ways = {Way::GivesCode},
                           .result = {.status = 9, .reports = 0}}};
  all.push_back(On("AllocationOnTheHeap", Born, Allocation(1000), kSuccess,
                   SettingsTable() + FrameTable("malloc", PXL_Err_NO_MEMORY, 0) + withCode));
  all.push_back(
      On("AllocationInThePool", Born, Allocation(1000000), kSuccess,
         SettingsTable() + FrameTable("K_AllocateRecycledPtr", PXL_Err_NO_MEMORY, 0) + withCode));
  all.push_back(On("FreeingOnTheHeap", Allocated(1000), Free, kSuccess, {}));
  all.push_back(On("FreeingInThePool", Allocated(1000000), Free, kSuccess, {}));
}

void AddReports(std::vector<Operation>& all) {
  all.push_back(On("ReportOfAShortage", Unborn, Report(PXL_Err_NO_MEMORY, 100, 100),
                   {.status = PXL_Err_NONE, .reports = 1}, MemoryReportTable(PXL_Err_NONE, 3)));
  all.push_back(On("ReportOfAnImageOverTheLimit", Unborn, Report(kLayerMemoryFull, 32767, 32767),
                   {.status = PXL_Err_NONE, .reports = 1}, MemoryReportTable(PXL_Err_NONE, 4)));
  all.push_back(On("ReportOfAnotherError", Unborn, Report(kLayerError, 100, 100),
                   {.status = PXL_Err_NONE, .reports = 1}, {}));
  all.push_back(On("ReportOfNothing", Unborn, Report(PXL_Err_NONE, 100, 100), kSuccess, {}));
}

void AddLifeAndVersions(std::vector<Operation>& all) {
  const Table libraries = {{.call = "K_CheckVersions",
                            .nth = 1,
                            .ways = {Way::Fails},
                            .result = {.status = PXL_Err_VERSION, .reports = 0}},
                           {.call = "Q_CheckVersions",
                            .nth = 1,
                            .ways = {Way::Fails},
                            .result = {.status = PXL_Err_VERSION, .reports = 0}},
                           {.call = "TXT_CheckVersions",
                            .nth = 1,
                            .ways = {Way::Fails},
                            .result = {.status = PXL_Err_VERSION, .reports = 0}}};
  const Table besides = {{.call = "K_CheckVersions",
                          .nth = 1,
                          .ways = {Way::Fails},
                          .result = {.status = PXL_Err_VERSION, .reports = 1}},
                         {.call = "Q_CheckVersions",
                          .nth = 1,
                          .ways = {Way::Fails},
                          .result = {.status = PXL_Err_VERSION, .reports = 1}},
                         {.call = "TXT_CheckVersions",
                          .nth = 1,
                          .ways = {Way::Fails},
                          .result = {.status = PXL_Err_VERSION, .reports = 1}}};
  const auto birth = [](OperationFixture&) { return PXL_Birth(0); };
  const auto death = [](OperationFixture&) { return PXL_Death(); };
  all.push_back(On("Birth", Unborn, birth, kSuccess, {}));
  all.push_back(On("SecondBirth", Born, birth, {.status = PXL_Err_NONE, .reports = 1}, {}));
  all.push_back(On("Death", Born, death, kSuccess, {}));
  all.push_back(On("SecondDeath", Unborn, death, {.status = PXL_Err_INVALID, .reports = 1}, {}));
  all.push_back(On(
      "VersionCheck", Unborn, [](OperationFixture&) { return PXL_CheckVersions(1, 31); }, kSuccess,
      libraries));
  all.push_back(On(
      "VersionMismatch", Unborn, [](OperationFixture&) { return PXL_CheckVersions(1, 30); },
      {.status = PXL_Err_VERSION, .reports = 1}, besides));
}

void AddBlits(std::vector<Operation>& all) {
  for (const std::int32_t depth : {8, 32}) {
    all.push_back(
        On("BlitByTheLayer" + std::to_string(depth), Pair(depth, 32), Blit, kSuccess, {}));
  }
  const std::int32_t deep[][2] = {{32, 64}, {32, 128}, {64, 32}, {64, 64}, {128, 32}, {128, 128}};
  for (const auto& [from, to] : deep) {
    const std::string name = std::to_string(from) + "To" + std::to_string(to);
    all.push_back(On("Blit" + name, Pair(from, to), Blit, kSuccess, {}));
    all.push_back(On("BlitOfUnequalSizes" + name, Pair(from, to, {0, 0, 4, 11}), Blit,
                     {.status = PXL_Err_REFUSED, .reports = 1}, {}));
  }
  const std::int32_t unhandled[][2] = {{64, 128}, {128, 64}, {8, 64}, {128, 8}};
  for (const auto& [from, to] : unhandled) {
    const std::string name = std::to_string(from) + "To" + std::to_string(to);
    all.push_back(On("UnhandledBlit" + name, Pair(from, to), Blit,
                     {.status = PXL_Err_NONE, .reports = 1}, {}));
  }
}

std::int32_t GetOrder(OperationFixture& fixture) {
  std::uint32_t order = 0;
  return PXL_GetChannelOrder(fixture.worldH, &order);
}

std::int32_t SetOrder(OperationFixture& fixture) {
  return PXL_SetChannelOrder(fixture.worldH, PXL_ChannelOrder_ALTERNATE);
}

std::int32_t Clear(OperationFixture& fixture) {
  return PXL_ClearWorldToLong(fixture.worldH, 0x01020304);
}

Step World(std::int32_t depth, std::uint32_t flags) {
  return [=](OperationFixture& fixture) {
    fixture.BeBorn();
    fixture.worldH = fixture.Make(depth, kSmall, flags);
  };
}

void AddPixels(std::vector<Operation>& all) {
  const Step surface = World(32, 0);
  const Step frame = World(32, PXL_Flag_NO_PLATFORM);
  all.push_back(On("GettingTheOrderOfASurface", surface, GetOrder, kSuccess,
                   {{.call = "QDE_GetGWorld32PixmapFormat",
                     .nth = 1,
                     .ways = {Way::Fails},
                     .result = {.status = kLayerError, .reports = 0}}}));
  all.push_back(On("SettingTheOrderOfASurface", surface, SetOrder, kSuccess,
                   {{.call = "QDE_SetGWorld32PixmapFormat",
                     .nth = 1,
                     .ways = {Way::Fails},
                     .result = {.status = kLayerError, .reports = 0}}}));
  all.push_back(On("GettingTheOrderOfAFrame", frame, GetOrder, kSuccess, {}));
  all.push_back(On("SettingTheOrderOfAFrame", frame, SetOrder, kSuccess, {}));
  all.push_back(On("SettingTheOrderOfADeepWorld", World(64, 0), SetOrder,
                   {.status = PXL_Err_REFUSED, .reports = 1}, {}));
  all.push_back(
      On("AssumingAnOrder", frame,
         [](OperationFixture& fixture) { return PXL_AssumeChannelOrder(fixture.worldH, 1); },
         kSuccess, {}));
  all.push_back(On("AskingForAnOrder", surface,
                   [](OperationFixture& fixture) {
                     return PXL_CanSetChannelOrder(fixture.worldH, &fixture.flag);
                   },
                   kSuccess, {}));
  all.push_back(On("AskingForTheAddressOfASurface", surface,
                   [](OperationFixture& fixture) {
                     return PXLp_GetPixBaseAddr(fixture.worldH) != nullptr ? 0 : 1;
                   },
                   kSuccess, {}));
  all.push_back(On("ClearingOfASurfaceToZeros", surface,
                   [](OperationFixture& fixture) { return PXL_ClearWorldToZeros(fixture.worldH); },
                   kSuccess, {}));
  all.push_back(On("ClearingOfASurface", surface, Clear, kSuccess, {}));
  all.push_back(On("ClearingOfAFrame", frame, Clear, kSuccess, {}));
  all.push_back(On("ClearingOfNothing", World(32, PXL_Flag_DEFERRED), Clear, kSuccess, {}));
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
