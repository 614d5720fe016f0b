// Reports of a shortage of memory.
#include "tests/support/host/whole.h"

using ::testing::StartsWith;

class Shortage : public Whole {};

TEST_F(Shortage, TellsTheSizeOfTheImage) {
  K_SetMemoryBudget(1 << 20);
  EXPECT_EQ(FailToMake(128, 1920, 1080), PXL_Err_NO_MEMORY);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x70005U);
  EXPECT_EQ(Reports()[0].cls, 8);
  EXPECT_THAT(Reports()[0].text,
              StartsWith("Unable to allocate enough memory to render the current frame (1920 x "
                         "1080 @ 32 bpc). Either decrease the memory requirements for the "
                         "rendering of this frame, or install more RAM. (12805). For more "
                         "information, see "));
}

TEST_F(Shortage, TellsAnImageBeyondTheLimitFromOneBeyondTheMemory) {
  EXPECT_EQ(FailToMake(128, 32000, 32000), PXL_Err_NO_MEMORY);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x70035U);
  EXPECT_THAT(Reports()[0].text,
              StartsWith("Image buffers of size 32000 x 32000 @ 32 bpc (15.3 GB) exceed internal "
                         "limits. Decrease the memory requirements for the rendering of this "
                         "frame. (12804). For more information, see "));
}

TEST_F(Shortage, TellsARowThatIsTooLong) {
  EXPECT_EQ(FailToMake(64, 32767, 1), PXL_Err_REFUSED);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].text, "row size too large (262144).");
}

TEST_F(Shortage, OfARecordIsReportedByItsAllocator) {
  K_SetMemoryBudget(1);
  EXPECT_EQ(FailToMake(64, 1, 1), PXL_Err_NO_MEMORY);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x70003U);
  EXPECT_THAT(Reports()[0].text, ::testing::HasSubstr("graphics structure"));
}

TEST_F(Shortage, IsRelievedByBlocksThatTheHostOnlyKept) {
  K_SetMemoryBudget(40 << 20);
  Dispose(Make(128, 1024, 1024));
  PXL_WorldHandle larger = Make(128, 1920, 1080);
  ASSERT_NE(larger, nullptr);
  Dispose(larger);
}

TEST_F(Shortage, InAReSizeLeavesTheOldSize) {
  PXL_WorldHandle worldH = Make(128, 512, 512);
  K_SetMemoryBudget(16 << 20);
  const Rect huge{0, 0, 2048, 2048};
  EXPECT_EQ(PXL_UpdateWorld(0, &huge, 0, nullptr, worldH), PXL_Err_NO_MEMORY);
  EXPECT_EQ(Record(worldH).width, 512);
  EXPECT_EQ(Record(worldH).pixels.rowBytes, 512 * 16);
  EXPECT_EQ(Record(worldH).pixels.frameSize, 2048U * 2048 * 16 + 20);
  ASSERT_NE(Record(worldH).pixels.frame, nullptr);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, -1), PXL_Err_NONE);
  Dispose(worldH);
}

TEST_F(Shortage, OfASurfaceIsToldInTheLayersWords) {
  QDE_FailNextCall(QDE_Call_NEW_GWORLD, QDE_Err_PARAMETER);
  EXPECT_EQ(FailToMake(32, 10, 10), QDE_Err_PARAMETER);
  ASSERT_EQ(Reports().size(), 1U);
  EXPECT_EQ(Reports()[0].code, 0x70027U);
  EXPECT_EQ(Reports()[0].error, QDE_Err_PARAMETER);
  EXPECT_THAT(Reports()[0].text, StartsWith("changing pixel buffer."));
}
