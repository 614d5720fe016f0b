// The marks of a live World.
#include "world/record/validity.h"

#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class Validity : public Contract {
 protected:
  // A record with the two marks, in a handle of the caller's.
  PXL_WorldHandle Marked(std::uint32_t head, std::uint32_t tail) {
    PXL_WorldHandle worldH = CallerHandle();
    Record(worldH) = {};
    Record(worldH).headMark = head;
    Record(worldH).tailMark = tail;
    return worldH;
  }
};

TEST_F(Validity, HoldsWithBothMarks) {
  EXPECT_EQ(PXLp_CheckWorld(PXLp_Site::DisposeWorld, Marked(0xBECCA, 0xBECCA)), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(Validity, OfADeadRecordIsReportedUnderTheSite) {
  EXPECT_EQ(PXLp_CheckWorld(PXLp_Site::UpdateWorld, Marked(0, 0)), PXL_Err_INVALID);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(54, 0, 0)",
                                 R"(Kp_ReportQuexErrString(0x7001A, 8, 2, "checking world"))"));
}

TEST_F(Validity, NeedsTheHeadMark) {
  EXPECT_EQ(PXLp_CheckWorld(PXLp_Site::DisposeWorld, Marked(0xBECCB, 0xBECCA)), PXL_Err_INVALID);
}

TEST_F(Validity, NeedsTheTailMark) {
  EXPECT_EQ(PXLp_CheckWorld(PXLp_Site::DisposeWorld, Marked(0xBECCA, 0xBECCB)), PXL_Err_INVALID);
}

TEST_F(Validity, GivesWhatTheReportGives) {
  recorder_.script.quexErrString = [](std::int32_t error) { return error + 1000; };
  EXPECT_EQ(PXLp_CheckWorld(PXLp_Site::DisposeWorld, Marked(0, 0)), 1002);
}

TEST_F(Validity, OverruledByTheReportLetsTheOperationGoOn) {
  recorder_.script.quexErrString = [](std::int32_t) { return 0; };
  PXL_WorldHandle worldH = Marked(0, 0);
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("HLock"), 1);
  EXPECT_EQ(PXLp_G.worldCount, -1);
}

TEST_F(Validity, OfADamagedWorldStopsTheFourOperationsThatTestIt) {
  PXL_WorldHandle worldH = Marked(0xBECCA, 0);
  EXPECT_EQ(PXL_DisposeWorld(worldH), PXL_Err_INVALID);
  EXPECT_EQ(PXL_UpdateWorld(0, nullptr, 0, nullptr, worldH), PXL_Err_INVALID);
  PXL_UnlockPixels(worldH);
  EXPECT_EQ(PXL_LockPixels(0, worldH, nullptr), PXL_Err_INVALID);
  EXPECT_THAT(recorder_.LogOf({"Kp_ReportQuexErrString"}),
              ElementsAre(R"(Kp_ReportQuexErrString(0x70006, 8, 2, "checking world"))",
                          R"(Kp_ReportQuexErrString(0x7001A, 8, 2, "checking world"))",
                          R"(Kp_ReportQuexErrString(0x70028, 8, 2, "checking world"))",
                          R"(Kp_ReportQuexErrString(0x70033, 8, 2, "checking world"))"));
  EXPECT_EQ(recorder_.Count("HLock"), 0);
}

TEST_F(Validity, IsNotTestedByTheOtherOperations) {
  PXL_WorldHandle worldH = Marked(0, 0);
  std::uint64_t pixels[8] = {};
  Record(worldH).depth = 32;
  Record(worldH).width = 4;
  Record(worldH).height = 2;
  Record(worldH).pixels.baseAddr = pixels;
  Record(worldH).pixels.rowBytes = 32;
  std::uint8_t can = 0;
  std::uint32_t order = 9;
  EXPECT_EQ(PXL_CanSetChannelOrder(worldH, &can), PXL_Err_NONE);
  EXPECT_EQ(PXL_GetChannelOrder(worldH, &order), PXL_Err_NONE);
  EXPECT_EQ(PXL_AssumeChannelOrder(worldH, 1), PXL_Err_NONE);
  EXPECT_EQ(PXL_SetChannelOrder(worldH, 0), PXL_Err_NONE);
  EXPECT_EQ(PXL_ClearWorldToZeros(worldH), PXL_Err_NONE);
  EXPECT_EQ(PXL_ClearWorldToLong(worldH, 7), PXL_Err_NONE);
  EXPECT_EQ(PXLp_GetPixBaseAddr(worldH), pixels);
  Record(worldH).depth = 64;
  EXPECT_EQ(PXL_Blit(worldH, worldH, nullptr, nullptr, 0), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"Kp_ReportQuexErrString", "K_ZLookupLStrCache", "HLock"}),
              IsEmpty());
}
