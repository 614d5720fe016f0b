// Birth and death of the module.
#include "tests/support/module/contract.h"
#include "transfer/kernels/conversion_tables.h"

using ::testing::ElementsAre;

class Birth : public Contract {};
class Death : public Contract {};

TEST_F(Birth, FindsAModuleThatHasNotLived) {
  EXPECT_EQ(PXLp_G.bornMark, 0U);
  EXPECT_EQ(PXLp_G.birthArg, 0U);
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Birth, LogsFirstAndReportsNothing) {
  EXPECT_EQ(PXL_Birth(7), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre(R"(TRC_Log(10, "PXL", "Birth", "PXL Birth"))"));
}

TEST_F(Birth, StampsTheStateAndZeroesTheCount) {
  PXLp_G.worldCount = 5;
  PXL_Birth(7);
  EXPECT_EQ(PXLp_G.bornMark, 0xBECCAU);
  EXPECT_EQ(PXLp_G.bornMark, 781514U);
  EXPECT_EQ(PXLp_G.birthArg, 7U);
  EXPECT_EQ(PXLp_G.worldCount, 0);
}

TEST_F(Birth, BuildsTheConversionTables) {
  PXL_Birth(0);
  EXPECT_EQ(PXLp_table8to16[0], 0);
  EXPECT_EQ(PXLp_table8to16[1], 129);
  EXPECT_EQ(PXLp_table8to16[127], 16320);
  EXPECT_EQ(PXLp_table8to16[128], 16448);
  EXPECT_EQ(PXLp_table8to16[254], 32640);
  EXPECT_EQ(PXLp_table8to16[255], 32768);
  EXPECT_EQ(PXLp_table8toF[255], 1.0F);
}

TEST_F(Birth, OfAModuleThatLivesIsReportedAndChangesNothing) {
  PXL_Birth(7);
  PXLp_G.worldCount = 3;
  PXLp_table8to16[1] = 9;
  ForgetLog();
  EXPECT_EQ(PXL_Birth(8), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre(R"(TRC_Log(10, "PXL", "Birth", "PXL Birth"))",
                                 "K_ZLookupLStrCache(51, 0, 0)",
                                 R"(Kp_ReportErrString(0x70002, 8, "rebirth."))"));
  EXPECT_EQ(PXLp_G.bornMark, 0xBECCAU);
  EXPECT_EQ(PXLp_G.birthArg, 7U);
  EXPECT_EQ(PXLp_G.worldCount, 3);
  EXPECT_EQ(PXLp_table8to16[1], 9);
}

TEST_F(Birth, TakesAnyMarkForALife) {
  PXLp_G.bornMark = 1;
  EXPECT_EQ(PXL_Birth(0), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("Kp_ReportErrString"), 1);
  EXPECT_EQ(PXLp_G.bornMark, 1U);
  EXPECT_EQ(PXLp_table8to16[255], 0);
}

TEST_F(Birth, AfterADeathBuildsTheTablesAnew) {
  PXL_Birth(0);
  const auto wide = PXLp_table8to16;
  const auto real = PXLp_table8toF;
  PXL_Death();
  PXLp_table8to16.fill(1);
  PXLp_table8toF.fill(1);
  PXL_Birth(0);
  EXPECT_EQ(PXLp_table8to16, wide);
  EXPECT_EQ(PXLp_table8toF, real);
}

TEST_F(Death, LogsFirstAndClearsOnlyTheMark) {
  PXL_Birth(7);
  PXLp_G.worldCount = 3;
  ForgetLog();
  EXPECT_EQ(PXL_Death(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre(R"(TRC_Log(10, "PXL", "Death", "PXL Death"))"));
  EXPECT_EQ(PXLp_G.bornMark, 0U);
  EXPECT_EQ(PXLp_G.birthArg, 7U);
  EXPECT_EQ(PXLp_G.worldCount, 3);
  EXPECT_EQ(PXLp_table8to16[255], 32768);
  EXPECT_EQ(PXLp_table8toF[255], 1.0F);
}

TEST_F(Death, OfAModuleThatDoesNotLiveIsReported) {
  EXPECT_EQ(PXL_Death(), PXL_Err_INVALID);
  EXPECT_THAT(
      Log(),
      ElementsAre(R"(TRC_Log(10, "PXL", "Death", "PXL Death"))", "K_ZLookupLStrCache(57, 0, 0)",
                  R"(Kp_ReportErrString(0x70008, 8, "double or corrupted death."))"));
}

TEST_F(Death, TwiceIsReportedTheSecondTime) {
  PXL_Birth(0);
  EXPECT_EQ(PXL_Death(), PXL_Err_NONE);
  EXPECT_EQ(PXL_Death(), PXL_Err_INVALID);
  EXPECT_EQ(recorder_.Count("Kp_ReportErrString"), 1);
}

TEST_F(Death, AcceptsOnlyTheExactMark) {
  PXLp_G.bornMark = 1;
  EXPECT_EQ(PXL_Death(), PXL_Err_INVALID);
  EXPECT_EQ(PXLp_G.bornMark, 1U);
}

TEST_F(Death, SaysNothingOfLiveWorlds) {
  BeBorn();
  ASSERT_NE(Make(64, Sized(4, 4)), nullptr);
  ForgetLog();
  EXPECT_EQ(PXL_Death(), PXL_Err_NONE);
  EXPECT_EQ(Log().size(), 1U);
  EXPECT_EQ(PXLp_G.worldCount, 1);
  EXPECT_THAT(recorder_.Outstanding(), ElementsAre("handle1", "heap1"));
}
