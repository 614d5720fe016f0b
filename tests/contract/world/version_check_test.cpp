// PXL_CheckVersions.
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class PackageVersion : public Contract {};
class VersionCheck : public Contract {};

TEST_F(PackageVersion, IsInterface31Revision14) {
  EXPECT_EQ(PXL_PkgObjectVersion(), 0x001F000EU);
  EXPECT_EQ(PXL_PkgObjectVersion(), 2031630U);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(VersionCheck, AsksTheThreeLibrariesUnderItsOwnCode) {
  EXPECT_EQ(PXL_CheckVersions(0x123456, 31), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_CheckVersions(0x70001, 61)", "Q_CheckVersions(0x70001, 18)",
                                 "TXT_CheckVersions(0x70001, 3)"));
}

TEST_F(VersionCheck, AsksTheLibrariesOnlyOnce) {
  PXL_CheckVersions(0, 31);
  ForgetLog();
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(VersionCheck, AsksTheOtherLibrariesAfterAMismatchOfTheFirst) {
  recorder_.script.versionsOfK = 1;
  recorder_.script.versionsOfQ = 2;
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_VERSION);
  EXPECT_EQ(recorder_.Count("Q_CheckVersions"), 1);
  EXPECT_EQ(recorder_.Count("TXT_CheckVersions"), 1);
}

TEST_F(VersionCheck, FailsForAMismatchOfEachLibraryWithoutAReportOfItsOwn) {
  std::int32_t recorder::Script::*const answers[] = {&recorder::Script::versionsOfK,
                                                     &recorder::Script::versionsOfQ,
                                                     &recorder::Script::versionsOfTXT};
  for (const auto answer : answers) {
    Unload();
    recorder_.script.*answer = 5;
    EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_VERSION);
    EXPECT_EQ(Log().size(), 3U);
  }
}

TEST_F(VersionCheck, CombinesTheAnswersByBits) {
  recorder_.script.versionsOfK = 1;
  recorder_.script.versionsOfTXT = -1;
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_VERSION);
  Unload();
  // Their sum is 0.
  recorder_.script.versionsOfK = 1;
  recorder_.script.versionsOfQ = -1;
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_VERSION);
}

TEST_F(VersionCheck, ForgetsAMismatchOfTheLibrariesAfterTheFirstCall) {
  recorder_.script.versionsOfTXT = 1;
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_VERSION);
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("TXT_CheckVersions"), 1);
}

TEST_F(VersionCheck, UsesItsOneLookAtTheLibrariesUpOnAWrongHeader) {
  recorder_.script.versionsOfK = 1;
  EXPECT_EQ(PXL_CheckVersions(0, 30), PXL_Err_VERSION);
  EXPECT_EQ(recorder_.Count("Kp_ReportError"), 1);
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_NONE);
  EXPECT_EQ(recorder_.Count("K_CheckVersions"), 1);
}

// A library that asks back while it is asked finds the question answered.
TEST_F(VersionCheck, CountsAsDoneBeforeTheLibrariesAreAsked) {
  std::int32_t nested = -1;
  recorder_.OnCall([&](const std::string& name) {
    if (name == "K_CheckVersions" && nested == -1) nested = PXL_CheckVersions(0, 31);
  });
  recorder_.script.versionsOfK = 1;
  EXPECT_EQ(PXL_CheckVersions(0, 31), PXL_Err_VERSION);
  EXPECT_EQ(nested, 0);
  EXPECT_EQ(recorder_.Count("K_CheckVersions"), 1);
}

TEST_F(VersionCheck, IsNotRepeatedAfterABirthOrADeath) {
  PXL_CheckVersions(0, 31);
  PXL_Birth(0);
  PXL_CheckVersions(0, 31);
  PXL_Death();
  PXL_CheckVersions(0, 31);
  EXPECT_EQ(recorder_.Count("K_CheckVersions"), 1);
}

TEST_F(VersionCheck, ReportsAnOlderHeaderUnderTheCallersCode) {
  PXL_CheckVersions(0, 31);
  ForgetLog();
  EXPECT_EQ(PXL_CheckVersions(0x12345678, 30), PXL_Err_VERSION);
  EXPECT_THAT(Log(),
              ElementsAre("Kp_ReportError(0x12345678, 16 error 0 "
                          "\"Plug-in version mismatch detected (did you install over an older "
                          "version of Orvanta?). Try uninstalling and re-installing. "
                          "(PXL package v31 != PXL.h v30)\")"));
}

TEST_F(VersionCheck, ReportsANewerHeader) {
  EXPECT_EQ(PXL_CheckVersions(9, 32), PXL_Err_VERSION);
  EXPECT_THAT(Log().back(),
              ::testing::AllOf(::testing::StartsWith("Kp_ReportError(0x9, 16 error 0 "),
                               ::testing::EndsWith("(PXL package v31 != PXL.h v32)\")")));
}

TEST_F(VersionCheck, PrintsTheHeaderVersionSigned) {
  EXPECT_EQ(PXL_CheckVersions(0, -1), PXL_Err_VERSION);
  EXPECT_THAT(Log().back(), ::testing::EndsWith("PXL.h v-1)\")"));
}

TEST_F(VersionCheck, DoesNotTakeTheWholePackageVersionForTheInterface) {
  EXPECT_EQ(PXL_CheckVersions(0, 0x001F000E), PXL_Err_VERSION);
  EXPECT_EQ(PXL_CheckVersions(0, 14), PXL_Err_VERSION);
  EXPECT_EQ(PXL_CheckVersions(0, 0x001F0000), PXL_Err_VERSION);
}

TEST_F(VersionCheck, WithBothWrongReportsOnlyTheHeader) {
  recorder_.script.versionsOfQ = 1;
  EXPECT_EQ(PXL_CheckVersions(0, 32), PXL_Err_VERSION);
  EXPECT_EQ(recorder_.Count("Kp_ReportError"), 1);
  EXPECT_EQ(Log().size(), 4U);
}

TEST_F(VersionCheck, NeedsNoBirthAndLeavesTheStateAlone) {
  PXLp_G = {1, 2, 3};
  PXL_CheckVersions(0, 32);
  PXL_PkgObjectVersion();
  EXPECT_EQ(PXLp_G.bornMark, 1U);
  EXPECT_EQ(PXLp_G.birthArg, 2U);
  EXPECT_EQ(PXLp_G.worldCount, 3);
  EXPECT_EQ(recorder_.Count("TRC_Log"), 0);
}
