// Addresses of rows and pixels.
#include "transfer/row_address.h"

#include <limits>

#include "tests/support/module/born_module.h"
#include "tests/support/module/record_fields.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class RowAddress : public BornModule {
 protected:
  RowAddress() {
    Record(worldH_).pixels.baseAddr = memory_ + 500;
    Record(worldH_).pixels.rowBytes = 100;
  }
  // How far from the base address the pixel lies.
  std::ptrdiff_t Offset(std::int32_t x, std::int32_t y, std::int32_t depth = 64) {
    void* address = nullptr;
    EXPECT_EQ(PXLp_WorldGetBaseAddrXY(worldH_, depth, x, y, &address), 0);
    return static_cast<char*>(address) - (memory_ + 500);
  }

  PXL_WorldHandle worldH_ = NewWorld(64, Sized(10, 4), PXL_Flag_DEFERRED);
  char memory_[1000] = {};
};

constexpr const char* kReport =
    "K_ReportFailedVerification(0x703E7, 112, 0, "
    "\"bad pointer access in PXLp_WorldGetBaseAddrXY()\")";

}  // namespace

TEST_F(RowAddress, IsTheBaseAndTheRowsAbove) {
  const PXL_World before = Record(worldH_);
  EXPECT_EQ(Offset(0, 0), 0);
  EXPECT_EQ(Offset(0, 1), 100);
  EXPECT_EQ(Offset(0, 3), 300);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_THAT(ChangedFields(before, Record(worldH_)), IsEmpty());
}

TEST_F(RowAddress, FollowsANegativeStride) {
  Record(worldH_).pixels.rowBytes = -100;
  EXPECT_EQ(Offset(0, 3), -300);
}

TEST_F(RowAddress, TakesTheRowForASignedNumber) {
  EXPECT_EQ(Offset(0, -2), -200);
}

TEST_F(RowAddress, CountsColumnsInPixels) {
  EXPECT_EQ(Offset(3, 1), 124);
  Record(worldH_).depth = 128;
  EXPECT_EQ(Offset(3, 1, 128), 148);
}

TEST_F(RowAddress, ReachesFurtherThan32Bits) {
  Record(worldH_).pixels.rowBytes = std::numeric_limits<std::int32_t>::max();
  EXPECT_EQ(Offset(0, 4), std::int64_t{4} * std::numeric_limits<std::int32_t>::max());
}

TEST_F(RowAddress, StartsAtTheAlignedPixelOfALockedFrame) {
  recorder_.script.blockOffset = 5;
  PXL_WorldHandle worldH = NewWorld(128, Sized(10, 4));
  PXL_LockPixels(0, worldH, nullptr);
  void* address = nullptr;
  EXPECT_EQ(PXLp_WorldGetBaseAddrXY(worldH, 128, 0, 2, &address), 0);
  EXPECT_EQ(address, static_cast<char*>(PXLp_GetPixBaseAddr(worldH)) + 320);
}

TEST_F(RowAddress, OfAWorldOfAnotherDepthIsRefused) {
  char untouched = 0;
  void* address = &untouched;
  for (const std::int32_t depth : {32, 128, -64, 0}) {
    ForgetLog();
    EXPECT_EQ(PXLp_WorldGetBaseAddrXY(worldH_, depth, 0, 0, &address), 3);
    EXPECT_THAT(Log(), ElementsAre(kReport));
  }
  EXPECT_EQ(address, &untouched);
}

TEST_F(RowAddress, DoesNotCheckTheMarks) {
  Record(worldH_).headMark = 0;
  EXPECT_EQ(Offset(0, 1), 100);
}
