// The base address of a World.
#include <type_traits>

#include "tests/contract/state/scripted_provider.h"
#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

static_assert(std::is_same_v<decltype(&PXLp_GetPixBaseAddr), void* (*)(PXL_WorldHandle)>);

class BaseAddress : public BornModule {};

}  // namespace

TEST_F(BaseAddress, OfALockedWorldIsTheCachedOne) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  char cached = 0;
  Record(worldH).pixels.baseAddr = &cached;
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), &cached);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(BaseAddress, OfAnUnlockedSurfaceIsAskedOfTheSurface) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  void* pixels = SurfacePixels(worldH);
  const PXL_World before = Record(worldH);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), pixels);
  EXPECT_THAT(Log(), ElementsAre("GetPortPixMap(gworld1)", "GetPixBaseAddr(map of gworld1)"));
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(BaseAddress, OfASurfaceComesBeforeTheFrame) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  void* pixels = SurfacePixels(worldH);
  char frame = 0;
  Record(worldH).pixels.frame = &frame;
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), pixels);
}

TEST_F(BaseAddress, OfASurfaceIsChosenByTheFlag) {
  PXL_WorldHandle worldH = NewWorld(32, Sized(10, 4));
  Record(worldH).hasGWorld = 0;
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  Record(worldH).hasGWorld = 0x80;
  EXPECT_NE(PXLp_GetPixBaseAddr(worldH), nullptr);
}

TEST_F(BaseAddress, OfAnUnlockedFrameIsItsFirstPixel) {
  recorder_.script.blockOffset = 9;
  PXL_WorldHandle worldH = NewWorld(128, Sized(10, 4));
  const PXL_World before = Record(worldH);
  ASSERT_EQ(before.pixels.alignOffset, 7U);
  EXPECT_EQ(before.pixels.baseAddr, nullptr);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), static_cast<char*>(before.pixels.frame) + 7);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH)), IsEmpty());
}

TEST_F(BaseAddress, OfALockedFrameIsTheSame) {
  PXL_WorldHandle worldH = NewWorld(128, Sized(10, 4));
  void* unlocked = PXLp_GetPixBaseAddr(worldH);
  PXL_LockPixels(0, worldH, nullptr);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), unlocked);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, unlocked);
}

TEST_F(BaseAddress, OfAProviderIsThereWhileItIsLocked) {
  PXL_WorldHandle worldH = NewWorld(128, Sized(10, 4), PXL_Flag_DEFERRED);
  ScriptedProvider provider(worldH);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  PXL_LockPixels(0, worldH, nullptr);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), provider.Pixels());
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
}

TEST_F(BaseAddress, OfAWorldWithoutPixelsIsNull) {
  PXL_WorldHandle worldH = NewWorld(128, Sized(10, 4), PXL_Flag_DEFERRED);
  Record(worldH).pixels.alignOffset = 5;
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(BaseAddress, OfADamagedWorldIsGivenAllTheSame) {
  PXL_WorldHandle worldH = NewWorld(64, Sized(10, 4));
  Record(worldH).headMark = 0;
  Record(worldH).tailMark = 0;
  EXPECT_NE(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_THAT(Log(), IsEmpty());
}
