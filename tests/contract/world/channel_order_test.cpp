// The channel order of Worlds.
#include <algorithm>

#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr std::uint32_t kUnwritten = 0x12345678;
constexpr const char* kRefusal =
    R"(K_ReportFailedVerification(0x0, 650, 0, "Unable to set ChannelOrder"))";

}  // namespace

class ChannelOrder : public Contract {
 protected:
  ChannelOrder() { BeBorn(); }
  PXL_WorldHandle Frame(std::uint32_t flags = 0) {
    PXL_WorldHandle worldH = Make(32, Sized(10, 6), PXL_Flag_NO_PLATFORM | flags);
    ForgetLog();
    return worldH;
  }
  PXL_WorldHandle Surface(std::uint32_t flags = 0) {
    PXL_WorldHandle worldH = Make(32, Sized(10, 6), flags);
    ForgetLog();
    return worldH;
  }
  static void* FirstPixel(PXL_WorldHandle worldH) {
    const PXL_PixelBuffer& pixels = Record(worldH).pixels;
    return static_cast<char*>(pixels.frame) + pixels.alignOffset;
  }
};

TEST_F(ChannelOrder, CanBeSetAt32BitsOnly) {
  for (const std::int32_t depth : {1, 8, 16, 24, 31, 32, 33, 64, 128}) {
    PXL_WorldHandle worldH = Make(depth, Sized(10, 10), PXL_Flag_DEFERRED);
    std::uint8_t can = 9;
    EXPECT_EQ(PXL_CanSetChannelOrder(worldH, &can), PXL_Err_NONE);
    EXPECT_EQ(can, depth == 32 ? 1 : 0) << depth;
  }
}

TEST_F(ChannelOrder, OfAFrameIsWhatIsRecorded) {
  std::uint32_t order = kUnwritten;
  EXPECT_EQ(PXL_GetChannelOrder(Frame(), &order), PXL_Err_NONE);
  EXPECT_EQ(order, 0U);
  EXPECT_EQ(PXL_GetChannelOrder(Frame(PXL_Flag_ALT_ORDER), &order), PXL_Err_NONE);
  EXPECT_EQ(order, 1U);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ChannelOrder, IsRecordedAtAnyDepth) {
  PXL_WorldHandle worldH = Make(64, Sized(10, 10));
  std::uint32_t order = kUnwritten;
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
  EXPECT_EQ(order, 1U);
}

TEST_F(ChannelOrder, OfASurfaceIsTheDrawingLayersFormat) {
  PXL_WorldHandle worldH = Surface(PXL_Flag_ALT_ORDER);
  std::uint32_t order = kUnwritten;
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
  EXPECT_EQ(order, 0U);
  EXPECT_THAT(Log(), ElementsAre("QDE_GetGWorld32PixmapFormat(gworld1, -1)"));
  recorder_.script.pixmapFormat = 1;
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
  EXPECT_EQ(order, 1U);
}

TEST_F(ChannelOrder, OfAnUnknownFormatIsNotWritten) {
  PXL_WorldHandle worldH = Surface();
  for (const std::int32_t format : {-1, 2, 256}) {
    recorder_.script.pixmapFormat = format;
    std::uint32_t order = kUnwritten;
    EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
    EXPECT_EQ(order, kUnwritten);
  }
}

TEST_F(ChannelOrder, IsStoredByTheFormatWhateverTheStatus) {
  PXL_WorldHandle worldH = Surface();
  recorder_.script.pixmapFormatError = -32768;
  recorder_.script.pixmapFormat = 1;
  std::uint32_t order = kUnwritten;
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), -32768);
  EXPECT_EQ(order, 1U);
  recorder_.script.pixmapFormat = -1;
  order = kUnwritten;
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), -32768);
  EXPECT_EQ(order, kUnwritten);
}

TEST_F(ChannelOrder, IsAssumedWithoutTouchingThePixels) {
  PXL_WorldHandle worldH = Frame(0x0020);
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).flags, 0x0620U);
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).flags, 0x0620U);
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 0), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).flags, 0x0220U);
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 0), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).flags, 0x0220U);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(ChannelOrder, OfAnyOtherNumberIsNotAssumed) {
  for (const std::uint32_t flags : {0U, 0x0400U}) {
    PXL_WorldHandle worldH = Frame(flags);
    for (const std::int32_t order : {2, -1, 256, 0x0400}) {
      EXPECT_EQ(PXL_AssumeChannelOrder(worldH, order), PXL_Err_NONE);
      EXPECT_EQ(Record(worldH).flags, 0x0200U | flags);
    }
  }
}

TEST_F(ChannelOrder, AssumedOfASurfaceIsKeptButNotConsulted) {
  PXL_WorldHandle worldH = Surface();
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).flags, 0x0400U);
  std::uint32_t order = kUnwritten;
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
  EXPECT_EQ(order, 0U);
}

TEST_F(ChannelOrder, CannotBeSetAtOtherDepths) {
  for (const std::int32_t depth : {8, 64, 128}) {
    PXL_WorldHandle worldH = Make(depth, Sized(10, 10));
    ForgetLog();
    // Also to the order that it has.
    EXPECT_EQ(PXL_SetChannelOrder(worldH, 0), PXL_Err_REFUSED);
    EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_REFUSED);
    EXPECT_THAT(Log(), ElementsAre(kRefusal, kRefusal));
    EXPECT_EQ(Record(worldH).flags, 0U);
  }
}

TEST_F(ChannelOrder, OfASurfaceIsSetByTheDrawingLayerEveryTime) {
  PXL_WorldHandle worldH = Surface();
  for (const std::int32_t order : {1, 1, 0, 0, 2, -1}) {
    EXPECT_EQ(PXL_SetChannelOrder(worldH, order), PXL_Err_NONE);
  }
  EXPECT_THAT(Log(), ElementsAre("QDE_SetGWorld32PixmapFormat(gworld1, 1)",
                                 "QDE_SetGWorld32PixmapFormat(gworld1, 1)",
                                 "QDE_SetGWorld32PixmapFormat(gworld1, 0)",
                                 "QDE_SetGWorld32PixmapFormat(gworld1, 0)",
                                 "QDE_SetGWorld32PixmapFormat(gworld1, 0)",
                                 "QDE_SetGWorld32PixmapFormat(gworld1, 0)"));
  EXPECT_EQ(Record(worldH).flags, 0U);
}

TEST_F(ChannelOrder, OfASurfaceGivesTheLayersErrorWithItsSign) {
  PXL_WorldHandle worldH = Surface();
  recorder_.script.pixmapFormatError = kLayerError;
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), kLayerError);
  recorder_.script.pixmapFormatError = 3;
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_REFUSED);
}

TEST_F(ChannelOrder, OfAFrameConvertsItOnceForAChange) {
  PXL_WorldHandle worldH = Frame();
  recorder_.Name(FirstPixel(worldH), "pixels");
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("QDE_ConvertBitsFast(pixels, 6, 10, 48)"));
  EXPECT_EQ(Record(worldH).flags, 0x0600U);
  ForgetLog();
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 0), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("QDE_ConvertBitsFast(pixels, 6, 10, 48)"));
  EXPECT_EQ(Record(worldH).flags, 0x0200U);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 0), PXL_Err_NONE);
  EXPECT_EQ(Log().size(), 1U);
}

TEST_F(ChannelOrder, IsRecordedAfterTheConversion) {
  PXL_WorldHandle worldH = Frame();
  bool seen = false;
  recorder_.OnCall([&](const std::string&) {
    seen = true;
    EXPECT_EQ(Record(worldH).flags, 0x0200U);
  });
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_TRUE(seen);
}

TEST_F(ChannelOrder, OfALockedFrameConvertsAtTheLockedAddress) {
  PXL_WorldHandle worldH = Frame();
  char pixels[288];
  recorder_.Name(pixels, "locked");
  Record(worldH).pixels.baseAddr = pixels;
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("QDE_ConvertBitsFast(locked, 6, 10, 48)"));
}

TEST_F(ChannelOrder, IsSetWithoutLocking) {
  PXL_WorldHandle worldH = Frame();
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).pixels.lockCount, 0);
  EXPECT_EQ(Record(worldH).pixels.baseAddr, nullptr);
}

TEST_F(ChannelOrder, OfAnyOtherNumberConvertsEveryTimeUnrecorded) {
  for (const std::uint32_t flags : {0U, 0x0400U}) {
    PXL_WorldHandle worldH = Frame(flags);
    EXPECT_EQ(PXL_SetChannelOrder(worldH, 2), PXL_Err_NONE);
    EXPECT_EQ(PXL_SetChannelOrder(worldH, 2), PXL_Err_NONE);
    EXPECT_EQ(PXL_SetChannelOrder(worldH, -1), PXL_Err_NONE);
    EXPECT_EQ(recorder_.Count("QDE_ConvertBitsFast"), 3);
    EXPECT_EQ(Record(worldH).flags, 0x0200U | flags);
  }
}

TEST_F(ChannelOrder, HandsOnThatThereAreNoPixels) {
  PXL_WorldHandle worldH = Make(32, Sized(10, 6), PXL_Flag_DEFERRED);
  ForgetLog();
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("QDE_ConvertBitsFast(null, 6, 10, 48)"));
  EXPECT_EQ(Record(worldH).flags, 0x0C00U);
}

TEST_F(ChannelOrder, OfAMappedWorldConvertsItsViewWhileItIsLocked) {
  PXL_WorldHandle worldH = Make(32, Sized(10, 6), PXL_Flag_DEFERRED | PXL_Flag_MAPPED);
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_NONE);
  ForgetLog();
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("QDE_ConvertBitsFast(view, 6, 10, 48)"));
  PXL_DisposeWorld(worldH);
}

// The record may move in every call of the layer.
TEST_F(ChannelOrder, IsRecordedWhereverTheRecordHasMoved) {
  PXL_WorldHandle worldH = Frame();
  recorder_.OnCall([&](const std::string&) { recorder_.MoveBlocks(); });
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(Record(worldH).flags, 0x0600U);
}
