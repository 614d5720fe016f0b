// The life of Worlds with frames, from creation to disposal.
#include <cstring>

#include "tests/support/host/whole.h"

using ::testing::IsEmpty;

class LifeOfAWorld : public Whole, public ::testing::WithParamInterface<std::int32_t> {};

TEST_P(LifeOfAWorld, KeepsItsPixelsFromLockToLock) {
  PXL_WorldHandle worldH = Make(GetParam(), 37, 11, PXL_Flag_CLEAR);
  ASSERT_NE(worldH, nullptr);
  const auto bytes = static_cast<std::size_t>(Record(worldH).pixels.rowBytes) * 11;
  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  void* base = Record(worldH).pixels.baseAddr;
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(base) % 16, 0U);
  EXPECT_EQ(std::string(static_cast<char*>(base), bytes), std::string(bytes, '\0'));
  std::memset(base, 0x3C, bytes);
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);

  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  const auto* again = static_cast<const char*>(Record(worldH).pixels.baseAddr);
  EXPECT_EQ(std::string(again, bytes), std::string(bytes, 0x3C));
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
  EXPECT_THAT(Reports(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(AllDepths, LifeOfAWorld, ::testing::Values(32, 64, 128));

class Worlds : public Whole {};

TEST_F(Worlds, OfFullHighDefinitionComeFromThePoolCleared) {
  K_PoolStatistics before;
  K_GetPoolStatistics(&before);
  PXL_WorldHandle worldH = Make(128, 1920, 1080, PXL_Flag_CLEAR);
  ASSERT_NE(worldH, nullptr);
  EXPECT_EQ(Record(worldH).pixels.rowBytes, 30720);
  EXPECT_EQ(Record(worldH).pixels.frameSize, 33177620U);
  EXPECT_TRUE(K_IsRecycledPtr(Record(worldH).pixels.frame));
  EXPECT_EQ(PXLp_G.worldCount, 1);
  const auto* pixels = static_cast<const std::uint64_t*>(PXLp_GetPixBaseAddr(worldH));
  std::uint64_t seen = 0;
  for (std::size_t i = 0; i < 30720U * 1080 / 8; ++i) seen |= pixels[i];
  EXPECT_EQ(seen, 0U);
  Dispose(worldH);
}

TEST_F(Worlds, SurviveTheMovingOfTheirRecords) {
  PXL_WorldHandle first = Make(64, 5, 5);
  ASSERT_NE(first, nullptr);
  const PXL_World* before = *first;
  PXL_WorldHandle second = Make(64, 5, 5);
  EXPECT_NE(*first, before);
  EXPECT_EQ(PXL_LockPixels(0, first, nullptr), PXL_Err_NONE);
  void* base = Record(first).pixels.baseAddr;
  Dispose(second);
  Dispose(Make(128, 9, 9));
  EXPECT_EQ(Record(first).pixels.baseAddr, base);
  PXL_UnlockPixels(first);
  Dispose(first);
}

TEST_F(Worlds, LiveInHandlesOfTheCallerToo) {
  Handle handle = K_AllocateHandleClear(0, "a handle of the test", sizeof(PXL_World));
  ASSERT_NE(handle, nullptr);
  auto* worldH = reinterpret_cast<PXL_WorldHandle>(handle);
  const Rect rect{10, 20, 110, 220};
  ASSERT_EQ(PXL_NewWorld(nullptr, 0, &rect, 64, 0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).width, 200);
  EXPECT_EQ(Record(worldH).height, 100);
  EXPECT_EQ(Record(worldH).bounds.top, 10);
  Dispose(worldH);
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_INVALID);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].text, "checking world");
  K_FreeHandle(handle);
}

TEST_F(Worlds, TakeDepthAndSizeFromAParent) {
  PXL_WorldHandle parent = Make(32, 31, 17);
  PXL_WorldHandle child = nullptr;
  ASSERT_EQ(
      PXL_NewWorld(parent, PXL_Flag_NO_PLATFORM, nullptr, PXL_Depth_SHARE, 0, nullptr, &child),
      PXL_Err_NONE);
  EXPECT_EQ(Record(child).depth, 32);
  EXPECT_EQ(Record(child).bounds.bottom, 17);
  EXPECT_EQ(Record(child).bounds.right, 31);
  Dispose(child);
  Dispose(parent);
}

TEST_F(Worlds, OfGeometryAloneHaveNoPixels) {
  PXL_WorldHandle worldH = Make(128, 1000, 1000, PXL_Flag_DEFERRED);
  EXPECT_EQ(Record(worldH).pixels.rowBytes, 16000);
  EXPECT_EQ(Record(worldH).pixels.frameSize, 16000020U);
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), nullptr);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
  Dispose(worldH);
}

TEST_F(Worlds, AreReSizedInPlace) {
  PXL_WorldHandle worldH = Make(64, 100, 100);
  const Rect larger{5, 5, 605, 805};
  EXPECT_EQ(PXL_UpdateWorld(0, &larger, 0, nullptr, worldH), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).width, 800);
  EXPECT_EQ(Record(worldH).height, 600);
  EXPECT_EQ(Record(worldH).bounds.left, 0);
  ASSERT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  PixelAt<PXL_Pixel16>(worldH, 799, 599) = {{1, 2, 3, 4}};
  EXPECT_EQ(PXL_UpdateWorld(0, &larger, 0, nullptr, worldH), PXL_Err_REFUSED);
  PXL_UnlockPixels(worldH);
  Dispose(worldH);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].text, "can’t refresh a locked pixel buffer.");
}

TEST_F(Worlds, ChangeTheirChannelOrderAndBack) {
  PXL_WorldHandle worldH = Make(32, 3, 2, PXL_Flag_CLEAR);
  PixelAt<PXL_Pixel8>(worldH, 2, 1) = {{1, 2, 3, 4}};
  EXPECT_EQ(PXL_SetChannelOrder(worldH, PXL_ChannelOrder_ALTERNATE), PXL_Err_NONE);
  EXPECT_EQ(PixelAt<PXL_Pixel8>(worldH, 2, 1).channel[0], 4);
  EXPECT_EQ(PixelAt<PXL_Pixel8>(worldH, 2, 1).channel[3], 1);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, PXL_ChannelOrder_STANDARD), PXL_Err_NONE);
  EXPECT_EQ(PixelAt<PXL_Pixel8>(worldH, 2, 1).channel[0], 1);
  Dispose(worldH);
}

TEST_F(Worlds, FillTheirRowsWithAPattern) {
  PXL_WorldHandle worldH = Make(64, 3, 2);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, 0x12345678), PXL_Err_NONE);
  const PXL_Pixel16& pixel = PixelAt<PXL_Pixel16>(worldH, 2, 1);
  EXPECT_EQ(pixel.channel[0], 0x5678);
  EXPECT_EQ(pixel.channel[1], 0x1234);
  EXPECT_EQ(pixel.channel[2], 0x5678);
  EXPECT_EQ(pixel.channel[3], 0x1234);
  Dispose(worldH);
}

TEST_F(Worlds, AreVouchedForByMatchingLibraries) {
  EXPECT_EQ(PXL_CheckVersions(0x70001, PXL_InterfaceVersion), PXL_Err_NONE);
  EXPECT_THAT(Reports(), IsEmpty());
  EXPECT_EQ(PXL_CheckVersions(0x12345, 30), PXL_Err_VERSION);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x12345U);
  EXPECT_EQ(Reports()[0].cls, 16);
  EXPECT_EQ(Reports()[0].text,
            "Plug-in version mismatch detected (did you install over an older version of "
            "Orvanta?). Try uninstalling and re-installing. (PXL package v31 != PXL.h v30)");
}
