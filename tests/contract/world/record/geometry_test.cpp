// The geometry of a World.
#include "world/record/geometry.h"

#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace {

constexpr std::uint64_t kUnwritten = 0x1111222233334444;

}  // namespace

class Geometry : public Contract {
 protected:
  std::int32_t Compute(std::int32_t depth, const Rect& rect) {
    PXLp_Geometry geometry = {kUnwritten, kUnwritten};
    const std::int32_t status = PXLp_ComputeGeometry(rect, depth, &geometry);
    rowBytes_ = geometry.rowBytes;
    size_ = geometry.frameSize;
    return status;
  }
  void ExpectGeometry(std::int32_t depth, int width, int height, std::uint64_t rowBytes,
                      std::uint64_t size) {
    SCOPED_TRACE(::testing::Message() << width << " x " << height << " at " << depth);
    EXPECT_EQ(Compute(depth, Sized(width, height)), PXL_Err_NONE);
    EXPECT_EQ(rowBytes_, rowBytes);
    EXPECT_EQ(size_, size);
  }

  std::uint64_t rowBytes_ = 0;
  std::uint64_t size_ = 0;
};

class AlignOffset : public Contract {};

TEST_F(Geometry, GivesShallowRowsOneSparePixel) {
  ExpectGeometry(32, 10, 10, 48, 496);
  ExpectGeometry(8, 10, 10, 16, 176);
  ExpectGeometry(32, 1, 1, 16, 32);
  ExpectGeometry(32, 3, 1, 16, 32);
  ExpectGeometry(32, 4, 1, 32, 48);
  ExpectGeometry(8, 15, 1, 16, 32);
  ExpectGeometry(8, 16, 1, 32, 48);
  ExpectGeometry(32, 0, 1, 16, 32);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Geometry, GivesDeepRowsNoneAndFourMoreBytesAtTheEnd) {
  ExpectGeometry(64, 10, 10, 80, 820);
  ExpectGeometry(128, 10, 10, 160, 1620);
  ExpectGeometry(64, 2, 1, 16, 36);
  ExpectGeometry(64, 3, 1, 32, 52);
  ExpectGeometry(64, 0, 5, 0, 20);
  ExpectGeometry(128, 1920, 1080, 30720, 33177620);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Geometry, TakesEveryDepthUpTo32ForShallow) {
  ExpectGeometry(33, 3, 1, 16, 36);
  ExpectGeometry(31, 4, 1, 16, 32);
  ExpectGeometry(16, 8, 1, 32, 48);
  ExpectGeometry(96, 1, 1, 16, 36);
}

TEST_F(Geometry, DividesTheDepthToWholeBytes) {
  ExpectGeometry(4, 100, 10, 0, 16);
  ExpectGeometry(15, 31, 1, 32, 48);
}

TEST_F(Geometry, LooksAtDifferencesOnly) {
  EXPECT_EQ(Compute(32, Rect{-5, -100, 5, -90}), PXL_Err_NONE);
  EXPECT_EQ(rowBytes_, 48U);
  EXPECT_EQ(size_, 496U);
}

TEST_F(Geometry, AcceptsAnEmptyHeight) {
  ExpectGeometry(32, 10, 0, 48, 16);
  ExpectGeometry(128, 10, 0, 160, 20);
}

TEST_F(Geometry, AcceptsRowsOfUpTo32766Pixels) {
  ExpectGeometry(32, 32765, 1, 131072, 131088);
  ExpectGeometry(8, 32765, 1, 32768, 32784);
  ExpectGeometry(64, 32766, 1, 262128, 262148);
  ExpectGeometry(128, 32766, 1, 524256, 524276);
}

TEST_F(Geometry, RefusesAShallowRowOfOnePixelMore) {
  EXPECT_EQ(Compute(32, Sized(32766, 1)), PXL_Err_REFUSED);
  EXPECT_EQ(rowBytes_, 0U);
  EXPECT_EQ(size_, 0U);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(29, 0, 0)",
                                 "Kp_ReportError(0x70035, 8 error 0 "
                                 R"("row size too large (131072)."))"));
}

TEST_F(Geometry, RefusesADeepRowOfOnePixelMore) {
  EXPECT_EQ(Compute(64, Sized(32767, 1)), PXL_Err_REFUSED);
  EXPECT_EQ(rowBytes_, 0U);
  EXPECT_EQ(size_, 0U);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(29, 0, 0)",
                                 "Kp_ReportError(0x70035, 8 error 0 "
                                 R"("row size too large (262144)."))"));
}

TEST_F(Geometry, RefusesTheWidestRectangleThatCoordinatesCanSpan) {
  EXPECT_EQ(Compute(128, Rect{0, -32768, 1, 32767}), PXL_Err_REFUSED);
  EXPECT_THAT(Log().back(), HasSubstr("row size too large (1048560)."));
}

TEST_F(Geometry, RefusesNegativeWidthsByTheRowAndNotByTheSize) {
  EXPECT_EQ(Compute(64, Sized(-1, 10)), PXL_Err_REFUSED);
  EXPECT_EQ(Compute(32, Sized(-2, 10)), PXL_Err_REFUSED);
  EXPECT_EQ(size_, 0U);
  EXPECT_EQ(Compute(32, Sized(-100, 10)), PXL_Err_REFUSED);
  EXPECT_THAT(Log().back(), HasSubstr("row size too large (-384)."));
  EXPECT_EQ(Compute(32, Sized(-2, -10)), PXL_Err_REFUSED);
}

TEST_F(Geometry, LetsTheSparePixelMakeUpForAWidthOfMinusOne) {
  ExpectGeometry(32, -1, 10, 0, 16);
  ExpectGeometry(8, -1, 10, 0, 16);
}

TEST_F(Geometry, RefusesANegativeHeightWithoutWritingTheOutputs) {
  EXPECT_EQ(Compute(32, Sized(10, -3)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(rowBytes_, kUnwritten);
  EXPECT_EQ(size_, kUnwritten);
  EXPECT_THAT(recorder_.LogOf({"NumberToString"}),
              ElementsAre("NumberToString(10)", "NumberToString(-3)", "NumberToString(8)",
                          R"(NumberToString(-0.0, 1, 1, 0, 31))"));
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}),
              ElementsAre(HasSubstr(R"(0x70035, 8, u"Image buffers of size 10 x -3 @ 8 bpc)")));
}

TEST_F(Geometry, ReportsANegativeHeightByTheSizeWithoutPadding) {
  EXPECT_EQ(Compute(128, Sized(32766, -32768)), PXL_Err_NO_MEMORY);
  // 16 x 32766 x -32768 bytes, and not the bytes of padded rows.
  EXPECT_THAT(recorder_.LogOf({"NumberToString"}).back(), R"(NumberToString(-16.0, 1, 1, 0, 31))");
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}), ElementsAre(HasSubstr("(12804)")));
}

TEST_F(Geometry, OfNoWidthAndNegativeHeightCallsItAShortage) {
  EXPECT_EQ(Compute(32, Sized(0, -3)), PXL_Err_NO_MEMORY);
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}), ElementsAre(HasSubstr("(12805)")));
}

TEST_F(Geometry, OfRowsWithoutBytesAcceptsANegativeHeight) {
  EXPECT_EQ(Compute(4, Sized(10, -3)), PXL_Err_NONE);
  EXPECT_EQ(size_, 16U);
  EXPECT_EQ(Compute(64, Sized(0, -3)), PXL_Err_NONE);
  EXPECT_EQ(size_, 20U);
}

TEST_F(Geometry, AcceptsTheLargestSizesBelow2GiB) {
  ExpectGeometry(32, 32763, 16386 - 2, 131056, 2147221520);
  EXPECT_EQ(Compute(32, Rect{-8193, 0, 8193, 32763}), PXL_Err_NONE);
  EXPECT_EQ(size_, 2147483632U);
  EXPECT_EQ(Compute(64, Rect{-8193, 0, 8193, 16382}), PXL_Err_NONE);
  EXPECT_EQ(size_, 2147483636U);
  ExpectGeometry(128, 32766, 4095, 524256, 2146828340);
  ExpectGeometry(128, 32766, 4096, 524256, 2147352596);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Geometry, RefusesASizeOf2GiBAndLeavesTheOutputsWritten) {
  // The pixels alone take 0x80000000 - 16 + 16 bytes.
  EXPECT_EQ(Compute(32, Sized(32765, 16384)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(rowBytes_, 131072U);
  EXPECT_EQ(size_, 2147483664U);
  EXPECT_THAT(recorder_.LogOf({"NumberToString"}),
              ElementsAre("NumberToString(32765)", "NumberToString(16384)", "NumberToString(8)",
                          R"(NumberToString(2.0, 1, 1, 0, 31))"));
  EXPECT_THAT(recorder_.LogOf({"K_ReportError"}),
              ElementsAre(HasSubstr(R"(0x70035, 8, u"Image buffers of size 32765 x 16384)")));
  EXPECT_THAT(recorder_.LogOf({"Kp_ReportError"}), IsEmpty());
}

// Real depths have no rectangle whose pixels alone just stay below the limit;
// 511 rows of one pixel of 4202512 bytes take 0x7FFFFFF0.
TEST_F(Geometry, CountsTheSpareBytesAgainstTheLimit) {
  EXPECT_EQ(Compute(4202512 * 8, Sized(1, 511)), PXL_Err_NO_MEMORY);
  EXPECT_EQ(size_, 0x80000004U);
  EXPECT_EQ(Compute(4202512 * 8, Sized(1, 510)), PXL_Err_NONE);
}

TEST_F(Geometry, KeepsTheFullHeightOfARectangle) {
  EXPECT_EQ(Compute(32, Rect{-32768, 0, 32767, 3}), PXL_Err_NONE);
  EXPECT_EQ(size_, 65535U * 16U + 16U);
}

TEST_F(Geometry, ClearsAnErrorThatWasPendingBeforeItsReport) {
  Kp_G_err_buf = -39;
  EXPECT_EQ(Compute(32, Sized(32766, 1)), PXL_Err_REFUSED);
  EXPECT_EQ(Kp_G_err_buf, 0);
  EXPECT_EQ(recorder_.Count("Kp_SysEnglishError"), 0);
}

TEST_F(Geometry, PrintsTheRowBytesIntoTheTranslatedText) {
  const char* key = PXL_G_zref->entries[29].key;
  PXL_G_zref->entries[29].key = "key=%d bytes are too many";
  EXPECT_EQ(Compute(32, Sized(32766, 1)), PXL_Err_REFUSED);
  PXL_G_zref->entries[29].key = key;
  EXPECT_STREQ(Kp_G_buffer, "131072 bytes are too many");
}

TEST_F(AlignOffset, LeadsToTheNext16ByteBoundary) {
  for (std::uintptr_t low = 0; low < 32; ++low) {
    const void* frame = reinterpret_cast<void*>(std::uintptr_t{0x7F0000001000} + low);
    EXPECT_EQ(PXLp_ComputeAlignOffset(frame), (16 - low % 16) % 16) << low;
  }
}

TEST_F(AlignOffset, OfNoFrameIsZero) {
  EXPECT_EQ(PXLp_ComputeAlignOffset(nullptr), 0U);
}

class PixMapRowBytes : public Contract {};

TEST_F(PixMapRowBytes, LeaveTheTwoTopBitsOut) {
  PixMap map{};
  PixMap* master = &map;
  map.rowBytes = static_cast<std::int16_t>(0xC000 | 0x1230);
  EXPECT_EQ(PXLp_ReadRowBytes(&master), 0x1230);
  map.rowBytes = -1;
  EXPECT_EQ(PXLp_ReadRowBytes(&master), 16383);
  map.rowBytes = 0x4010;
  EXPECT_EQ(PXLp_ReadRowBytes(&master), 0x10);
}
