// Tests of reports and their sink.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include "tests/support/host/kept_reports.h"

namespace {

TEST(Report, CarriesCodeClassAndText) {
  KeptReports reports;
  Kp_ReportErrString(0x70003, 8, "PXL unborn.");
  const Reports expected = {{0x70003, 8, 0, "PXL unborn."}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST(Report, ReachesTheSinkInFields) {
  std::vector<K_Report> fields;
  const auto keep = [](const K_Report* report, void* context) {
    static_cast<std::vector<K_Report>*>(context)->push_back(*report);
  };
  K_SetReportSink(keep, &fields);
  Kp_ReportQuexErrString(0x7001A, 8, -50, "");
  K_ReportError(0, 4, u"");
  Kp_ReportErrString(0xFEDCBA98, 0xFFFF, "");
  K_SetReportSink(nullptr, nullptr);
  ASSERT_EQ(fields.size(), 3U);
  EXPECT_EQ(fields[0].code, 0x7001AU);
  EXPECT_EQ(fields[0].module, 7);
  EXPECT_EQ(fields[0].site, 26);
  EXPECT_EQ(fields[0].cls, 8);
  EXPECT_EQ(fields[0].error, -50);
  EXPECT_EQ(fields[1].module, 0);
  EXPECT_EQ(fields[1].site, 0);
  EXPECT_EQ(fields[1].cls, 4);
  EXPECT_EQ(fields[1].error, 0);
  EXPECT_EQ(fields[2].module, 0xFEDC);
  EXPECT_EQ(fields[2].site, 0xBA98);
  EXPECT_EQ(fields[2].cls, 0xFFFF);
}

TEST(Report, ReturnsItsError) {
  KeptReports reports;
  EXPECT_EQ(Kp_ReportQuexErrString(0x7001A, 8, 2, "checking world"), 2);
  EXPECT_EQ(Kp_ReportQuexErrString(0x70003, 8, -50, ""), -50);
  const Reports expected = {{0x7001A, 8, 2, "checking world"}, {0x70003, 8, -50, ""}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST(Report, TurnsMacRomanIntoUTF8) {
  KeptReports reports;
  Kp_ReportErrString(0x70003, 8,
                     "can\xD5"
                     "t specify");
  EXPECT_EQ(reports.Take().at(0).text, "can\u2019t specify");
}

TEST(Report, IsOneLine) {
  KeptReports reports;
  Kp_ReportErrString(1, 8, "one\ntwo\rthree");
  K_ReportError(1, 8, u"four\nfive");
  const Reports expected = {{1, 8, 0, "one two three"}, {1, 8, 0, "four five"}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST(Report, TakesNullForAnEmptyText) {
  KeptReports reports;
  Kp_ReportErrString(1, 8, nullptr);
  EXPECT_EQ(reports.Take().at(0).text, "");
}

TEST(Report, TakesUTF16) {
  KeptReports reports;
  K_ReportError(0x70042, 8, u"4096 x 4096 @ 32 bpc \u2019 \U0001D11E");
  const Reports expected = {{0x70042, 8, 0, "4096 x 4096 @ 32 bpc \u2019 \U0001D11E"}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST(Report, NamesAFailedVerificationByItsNumber) {
  KeptReports reports;
  K_ReportFailedVerification(0x7003F, 17, 0, "rows don\xD5t fit");
  const Reports expected = {{0x7003F, 8, 0, "failed verification 17: rows don\u2019t fit"}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST(PendingReport, IsSentOnceAndCleared) {
  KeptReports reports;
  Kp_G_err_buf = -50;
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "%s", "row size too large (70000).");
  Kp_ReportError(0x70035, 8);
  EXPECT_STREQ(Kp_G_buffer, "");
  EXPECT_EQ(Kp_G_err_buf, 0);
  Kp_ReportError(0x70035, 16);
  const Reports expected = {{0x70035, 8, -50, "row size too large (70000)."}, {0x70035, 16, 0, ""}};
  EXPECT_EQ(reports.Take(), expected);
}

std::string WithWording(const char* text, std::int32_t error) {
  KeptReports reports;
  Kp_G_err_buf = error;
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "%s", text);
  Kp_SysEnglishError(error);
  Kp_ReportError(0x70005, 8);
  return reports.Take().at(0).text;
}

TEST(PendingReport, GetsTheWordingOfKnownErrors) {
  const std::pair<std::int32_t, const char*> names[] = {
      {-50, "(paramErr)"},     {-108, "(memFullErr)"}, {-109, "(nilHandleErr)"},
      {-111, "(memWZErr)"},    {-112, "(memPurErr)"},  {-152, "(cNoMemErr)"},
      {-153, "(cTempMemErr)"}, {-157, "(cDepthErr)"}};
  for (const auto& [error, name] : names) {
    const std::string text = WithWording("changing pixel buffer.", error);
    EXPECT_TRUE(text.starts_with("changing pixel buffer. ")) << text;
    EXPECT_NE(text.find(name), std::string::npos) << text;
  }
  EXPECT_EQ(WithWording("a.", 4), "a. There is not enough memory.");
  EXPECT_EQ(WithWording("a.", 0x701), "a. The pixels were purged.");
  EXPECT_EQ(WithWording("", 3), "The request was refused.");
}

TEST(PendingReport, NumbersUnknownErrors) {
  EXPECT_EQ(WithWording("changing pixel buffer.", -4711), "changing pixel buffer. error -4711");
}

TEST(PendingReport, NeverOutgrowsItsBuffer) {
  KeptReports reports;
  std::memset(Kp_G_buffer, 'x', sizeof Kp_G_buffer - 1);
  Kp_G_buffer[sizeof Kp_G_buffer - 4] = '\0';
  Kp_SysEnglishError(-50);
  EXPECT_EQ(std::strlen(Kp_G_buffer), sizeof Kp_G_buffer - 1);
  Kp_SysEnglishError(-50);
  Kp_ReportError(1, 8);
  std::string expected(sizeof Kp_G_buffer - 4, 'x');
  expected += " An";
  EXPECT_EQ(reports.Take().at(0).text, expected);
}

TEST(Exception, IsReportedAndTranslated) {
  KeptReports reports;
  EXPECT_EQ(K_TranslateAndReportException(std::runtime_error("disk full \xFF")), 1);
  EXPECT_EQ(K_TranslateAndReportException(std::bad_alloc()), 4);
  const Reports expected = {{K_Code_EXCEPTION, 8, 1, "disk full \uFFFD"},
                            {K_Code_EXCEPTION, 8, 4, std::bad_alloc().what()}};
  EXPECT_EQ(reports.Take(), expected);
}

TEST(ReportSink, IsALineOnStandardErrorByDefault) {
  testing::internal::CaptureStderr();
  Kp_ReportErrString(0x70003, 8, "can\xD5t.");
  Kp_ReportQuexErrString(0x70003, 16, -50, "checking world");
  K_ReportError(0, 4, u"Unable");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "0x70003 class 8: can\u2019t.\n"
            "0x70003 class 16 error -50: checking world\n"
            "0x00000 class 4: Unable\n");
}

TEST(ReportSink, GetsReportsOfManyThreadsOneByOne) {
  KeptReports reports;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int n = 0; n < 250; ++n) Kp_ReportErrString(1, 8, "text");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(reports.Take().size(), 1000U);
}

TEST(ReportSink, MayReportItself) {
  int count = 0;
  const auto again = [](const K_Report*, void* context) {
    if (++*static_cast<int*>(context) < 3) Kp_ReportErrString(1, 8, "again");
  };
  K_SetReportSink(again, &count);
  Kp_ReportErrString(1, 8, "first");
  K_SetReportSink(nullptr, nullptr);
  EXPECT_EQ(count, 3);
}

}  // namespace
