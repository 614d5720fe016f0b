// Disposal, of each kind of World.
#include "tests/failures/operation.h"

namespace {

constexpr Rect kSmall = {0, 0, 4, 10};
constexpr std::uint32_t kMapped = PXL_Flag_DEFERRED | PXL_Flag_MAPPED;

Operation Disposal(const std::string& name, const std::function<void(OperationFixture&)>& make,
                   const Table& table) {
  return {.name = name,
          .effect = Effect::Disposes,
          .prepare =
              [make](OperationFixture& fixture) {
                fixture.BeBorn();
                make(fixture);
                fixture.provider = OperationFixture::Record(fixture.worldH).pixels.provider;
              },
          .run = [](OperationFixture& fixture) { return PXL_DisposeWorld(fixture.worldH); },
          .result = kSuccess,
          .table = table};
}

std::function<void(OperationFixture&)> World(std::int32_t depth, const Rect& rect,
                                             std::uint32_t flags) {
  return [=](OperationFixture& fixture) { fixture.worldH = fixture.Make(depth, rect, flags); };
}

void MakeInTheCallersHandle(OperationFixture& fixture) {
  fixture.worldH = fixture.CallerHandle();
  PXL_NewWorld(nullptr, PXL_Flag_NO_PLATFORM, &kSmall, 32, 0, fixture.worldH, nullptr);
}

void MakeLockedAndMapped(OperationFixture& fixture) {
  fixture.worldH = fixture.Make(32, kSmall, kMapped);
  PXL_LockPixels(0, fixture.worldH, nullptr);
}

Operation DisposalOfADeadWorld() {
  return {.name = "ADeadWorld",
          .effect = Effect::None,
          .prepare =
              [](OperationFixture& fixture) {
                fixture.BeBorn();
                MakeInTheCallersHandle(fixture);
                PXL_DisposeWorld(fixture.worldH);
              },
          .run = [](OperationFixture& fixture) { return PXL_DisposeWorld(fixture.worldH); },
          .result = {.status = PXL_Err_INVALID, .reports = 1},
          .table = {{.call = "Kp_ReportQuexErrString",
                     .nth = 1,
                     .ways = {Way::Answers99},
                     .result = {.status = 99, .reports = 1}}}};
}

}  // namespace

std::vector<Operation> DisposalOperations() {
  const Table reset = {{.call = "Reset",
                        .nth = 1,
                        .ways = {Way::ThrowsException},
                        .result = {.status = PXL_Err_NO_MEMORY, .reports = 1}},
                       {.call = "Reset",
                        .nth = 1,
                        .ways = {Way::ThrowsLong, Way::ThrowsText},
                        .result = {.status = PXL_Err_NO_MEMORY, .reports = 0}},
                       {.call = "Reset", .nth = 1, .ways = {Way::ThrowsZero}, .result = kSuccess}};
  // K translates the exception that it reports to code 0.
  const Result released = {.status = PXL_Err_NONE, .reports = 1};
  return {Disposal("AHeapFrame", World(64, kSmall, 0), {}),
          Disposal("APoolFrame", World(128, RectOfThePool(128), 0), {}),
          Disposal("ASurface", World(32, kSmall, 0), {}),
          Disposal("GeometryAlone", World(32, kSmall, PXL_Flag_DEFERRED), {}),
          Disposal("AFrameInTheCallersHandle", MakeInTheCallersHandle, {}),
          Disposal("AMappedFile", World(128, kSmall, kMapped), reset).OrOfTwo({released}),
          Disposal("ALockedMappedFile", MakeLockedAndMapped, reset).OrOfTwo({released}),
          DisposalOfADeadWorld()};
}
