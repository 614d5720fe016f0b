// The module alive with the stand-in host, for tests of both.
#include "tests/support/host/whole.h"

namespace {

Rect Sized(int width, int height) {
  return {0, 0, static_cast<std::int16_t>(height), static_cast<std::int16_t>(width)};
}

}  // namespace

Whole::Whole() : device_(GetGDevice()) {
  GetPort(&port_);
  K_SetScramble(1);
  PXL_Birth(0);
}

Whole::~Whole() {
  EXPECT_EQ(PXLp_G.worldCount, 0);
  PXL_Death();
  K_SetMemoryBudget(0);
  K_SetScramble(0);
  for (std::int32_t call = 0; call < QDE_CallCount; ++call) QDE_FailNextCall(call, 0);
  QDE_LosePixelsInFailedUpdates(0);
  QDE_ReplaceWorldInUpdates(0);
  GrafPtr port = nullptr;
  GetPort(&port);
  EXPECT_EQ(port, port_);
  EXPECT_EQ(GetGDevice(), device_);
  EXPECT_FALSE(QDE_IsBitmapCreationForced());
}

PXL_WorldHandle Whole::Make(std::int32_t depth, int width, int height, std::uint32_t flags) {
  if (depth == PXL_Depth_32) flags |= PXL_Flag_NO_PLATFORM;
  const Rect rect = Sized(width, height);
  PXL_WorldHandle worldH = nullptr;
  EXPECT_EQ(PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &worldH), PXL_Err_NONE);
  return worldH;
}

PXL_WorldHandle Whole::MakeSurface(std::int32_t depth, const Rect& bounds, std::uint32_t flags) {
  PXL_WorldHandle worldH = nullptr;
  EXPECT_EQ(PXL_NewWorld(nullptr, flags, &bounds, depth, 0, nullptr, &worldH), PXL_Err_NONE);
  return worldH;
}

PXL_WorldHandle Whole::MakeSurface(std::int32_t depth, int width, int height, std::uint32_t flags) {
  return MakeSurface(depth, Sized(width, height), flags);
}

void Whole::Dispose(PXL_WorldHandle worldH) {
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
}

std::int32_t Whole::FailToMake(std::int32_t depth, int width, int height, std::uint32_t flags) {
  const Rect rect = Sized(width, height);
  PXL_WorldHandle worldH = nullptr;
  const std::int32_t status = PXL_NewWorld(nullptr, flags, &rect, depth, 0, nullptr, &worldH);
  EXPECT_EQ(worldH, nullptr);
  return status;
}
