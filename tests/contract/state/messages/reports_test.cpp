// The ways of reporting.
#include "state/messages/reports.h"

#include <cstdio>
#include <utility>

#include "platform/K.h"
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;

class Reports : public Contract {};

TEST_F(Reports, OfAMessageLookItUpAndSendIt) {
  PXLp_ReportMessage(PXLp_Site::LockPixels, PXLp_Message::PixelBufferPurged);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(28, 0, 0)",
                                 R"(Kp_ReportErrString(0x70033, 8, "pixel buffer purged!"))"));
}

TEST_F(Reports, KeepNoTextForTheNextTime) {
  PXLp_ReportMessage(PXLp_Site::Birth, PXLp_Message::Rebirth);
  PXLp_ReportMessage(PXLp_Site::Birth, PXLp_Message::Rebirth);
  EXPECT_EQ(recorder_.Count("K_ZLookupLStrCache"), 2);
}

TEST_F(Reports, AreLookedUpInTheCatalogueThatTheHostSees) {
  K_LStrEntry entries[2] = {{"key=", {}}, {"key=another text", {}}};
  K_LStrCatalogue other = {"PXL", 2, entries, 0};
  K_LStrCatalogue* own = std::exchange(PXL_G_zref, &other);
  EXPECT_STREQ(PXLp_LookUpMessage(PXLp_Message::Unborn), "another text");
  PXL_G_zref = own;
}

TEST_F(Reports, OfAMessageWithAnErrorGiveWhatTheLibraryMakesOfIt) {
  EXPECT_EQ(PXLp_ReportMessageWithError(PXLp_Site::DisposeWorld, PXLp_Message::CheckingWorld, -35),
            -35);
  EXPECT_THAT(Log(), ElementsAre("K_ZLookupLStrCache(54, 0, 0)",
                                 R"(Kp_ReportQuexErrString(0x70006, 8, -35, "checking world"))"));
  recorder_.script.quexErrString = [](std::int32_t) { return 12; };
  EXPECT_EQ(PXLp_ReportMessageWithError(PXLp_Site::DisposeWorld, PXLp_Message::CheckingWorld, 2),
            12);
}

TEST_F(Reports, WithoutAnErrorNumberAskForNoWordsForIt) {
  PXLp_BeginReport(0);
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "text");
  PXLp_SendReport(0x70035, 8);
  EXPECT_THAT(Log(), ElementsAre(R"(Kp_ReportError(0x70035, 8 error 0 "text"))"));
}

TEST_F(Reports, WithAnErrorNumberAskForTheWordsFirst) {
  PXLp_BeginReport(-36);
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "text");
  PXLp_SendReport(0x7001A, 8);
  EXPECT_THAT(Log(), ElementsAre("Kp_SysEnglishError(-36)",
                                 R"(Kp_ReportError(0x7001A, 8 error -36 "text"))"));
}

TEST_F(Reports, OfAFailedVerificationGiveARefusal) {
  EXPECT_EQ(PXLp_FailVerification(0x7003B, 72, "text"), PXL_Err_REFUSED);
  EXPECT_THAT(Log(), ElementsAre(R"(K_ReportFailedVerification(0x7003B, 72, 0, "text"))"));
}

TEST_F(Reports, CarryTheModulesNumberAndTheSite) {
  const struct {
    PXLp_Site site;
    std::uint32_t code;
  } sites[] = {
      {PXLp_Site::VersionChecks, 0x70001}, {PXLp_Site::Birth, 0x70002},
      {PXLp_Site::NewWorld, 0x70003},      {PXLp_Site::FrameWorld, 0x70005},
      {PXLp_Site::DisposeWorld, 0x70006},  {PXLp_Site::Death, 0x70008},
      {PXLp_Site::UpdateWorld, 0x7001A},   {PXLp_Site::SurfaceWorld, 0x70027},
      {PXLp_Site::UnlockPixels, 0x70028},  {PXLp_Site::LockPixels, 0x70033},
      {PXLp_Site::ReloadPixels, 0x70034},  {PXLp_Site::ComputeGeometry, 0x70035},
      {PXLp_Site::ResizeFrame, 0x70036},   {PXLp_Site::FrameWorldDepth, 0x7003B},
      {PXLp_Site::Blit32toDeep, 0x7003F},  {PXLp_Site::BlitDeepto32, 0x70040},
      {PXLp_Site::BlitSameDepth, 0x70041}, {PXLp_Site::HostRequest, 0x70042},
      {PXLp_Site::Blit64, 0x70042},        {PXLp_Site::RowAddress, 0x703E7},
  };
  for (const auto& [site, code] : sites) EXPECT_EQ(PXLp_MakeReportCode(site), code);
}

TEST_F(Reports, HaveThreeClasses) {
  EXPECT_EQ(PXLp_kClassMapping, 4);
  EXPECT_EQ(PXLp_kClassError, 8);
  EXPECT_EQ(PXLp_kClassVersion, 16);
}

TEST_F(Reports, KnowTheirMessagesByNumber) {
  const struct {
    PXLp_Message message;
    const char* text;
  } messages[] = {
      {PXLp_Message::Unborn, "PXL unborn."},
      {PXLp_Message::GraphicsStructure, "graphics structure"},
      {PXLp_Message::CannotChangeDepth, "can#{rsquo}t change world depth."},
      {PXLp_Message::ChangingPixelBuffer, "changing pixel buffer."},
      {PXLp_Message::PixelBufferPurged, "pixel buffer purged!"},
      {PXLp_Message::RowTooLarge, "row size too large (%d)."},
      {PXLp_Message::LockedCannotReallocate, "a locked pixel buffer can#{rsquo}t be reallocated."},
      {PXLp_Message::StrangeChange, "strange change in pixel buffer."},
      {PXLp_Message::LockedCannotRefresh, "can#{rsquo}t refresh a locked pixel buffer."},
      {PXLp_Message::Rebirth, "rebirth."},
      {PXLp_Message::UnbalancedUnlock, "unbalanced unlock."},
      {PXLp_Message::CheckingWorld, "checking world"},
      {PXLp_Message::DoubleDeath, "double or corrupted death."},
  };
  for (const auto& [message, text] : messages) EXPECT_STREQ(PXLp_LookUpMessage(message), text);
}
