// A program may define functions under names that the library exports. The
// library's own calls have to go on reaching its own functions.
#include <gtest/gtest.h>

#include "PXL.h"

namespace {

int taken = 0;

}  // namespace

extern "C" {

std::int32_t PXL_AllocateFrameQuiet(std::uint64_t, std::uint64_t, void** frame) {
  ++taken;
  *frame = nullptr;
  return 99;
}

std::int32_t PXL_FreeFrame(void*, std::uint64_t) {
  ++taken;
  return 99;
}

std::int32_t PXL_ClearWorldToLong(PXL_WorldHandle, std::int32_t) {
  ++taken;
  return 99;
}

std::int32_t PXL_ClearWorldToZeros(PXL_WorldHandle) {
  ++taken;
  return 99;
}

std::int32_t PXL_GetChannelOrder(PXL_WorldHandle, std::uint32_t*) {
  ++taken;
  return 99;
}

std::int32_t PXL_AssumeChannelOrder(PXL_WorldHandle, std::int32_t) {
  ++taken;
  return 99;
}

std::int32_t PXL_CanSetChannelOrder(PXL_WorldHandle, std::uint8_t*) {
  ++taken;
  return 99;
}

void* PXLp_GetPixBaseAddr(PXL_WorldHandle) {
  ++taken;
  return nullptr;
}

std::uint32_t PXL_PkgObjectVersion(void) {
  ++taken;
  return 99;
}

}  // extern "C"

TEST(NamesTakenByTheProgram, AreNotUsedByTheLibrary) {
  const Rect rect{0, 0, 4, 4};
  const Rect larger{0, 0, 8, 8};
  PXL_WorldHandle worldH = nullptr;
  EXPECT_EQ(PXL_CheckVersions(0, PXL_InterfaceVersion), PXL_Err_NONE);
  PXL_Birth(0);
  ASSERT_EQ(
      PXL_NewWorld(nullptr, PXL_Flag_NO_PLATFORM | PXL_Flag_CLEAR, &rect, 32, 0, nullptr, &worldH),
      PXL_Err_NONE);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ((*worldH)->flags & PXL_Flag_ALT_ORDER, std::uint32_t{PXL_Flag_ALT_ORDER});
  EXPECT_EQ(PXL_UpdateWorld(0, &larger, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_EQ(PXL_LoadLockPixels(0, worldH, nullptr, nullptr), PXL_Err_NONE);
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  PXL_Death();
  EXPECT_EQ(taken, 0);
}
