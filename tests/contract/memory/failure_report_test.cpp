// The reports of a failed allocation of pixels.
#include "memory/failure_report.h"

#include <stdexcept>

#include "tests/support/module/contract.h"

using ::testing::AllOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;

namespace {

constexpr const char* kLimitText =
    "Image buffers of size @0 x @1 @@ @2 bpc (@3 GB) exceed internal limits. Decrease the memory "
    "requirements for the rendering of this frame. (12804). For more information, see ";
constexpr const char* kShortageText =
    "Unable to allocate enough memory to render the current frame (@0 x @1 @@ @2 bpc). Either "
    "decrease the memory requirements for the rendering of this frame, or install more RAM. "
    "(12805). For more information, see ";

// The address that the catalogue's own memory texts end in.
std::string HelpPage() {
  const std::string text = PXL_G_zref->entries[67].key;
  return text.substr(text.find("https:"));
}

}  // namespace

class BufferError : public Contract {
 protected:
  void Report(std::int32_t error, std::int32_t rowBytes, const Rect& bounds, std::int32_t depth,
              std::uint64_t byteCount) {
    ForgetLog();
    PXLp_ReportBufferError(PXLp_Site::FrameWorld, error, {bounds, depth, rowBytes}, byteCount);
  }
  // The size that the message names, or nothing for the message without one.
  std::string Gigabytes() {
    for (const std::string& call : recorder_.LogOf({"NumberToString"})) {
      if (call.ends_with(", 1, 1, 0, 31)")) return call;
    }
    return "";
  }
};

class MemoryMessage : public Contract {};
class HostRequest : public Contract {};

TEST_F(BufferError, OfZeroReportsNothing) {
  Kp_G_err_buf = 5;
  Report(0, 0, Sized(10, 10), 32, 0);
  Report(0, 0, Sized(10, 10), 32, 0xFFFFFFFFFF);
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(Kp_G_err_buf, 5);
}

TEST_F(BufferError, OtherThanMemoryReportsTheSystemsWording) {
  Report(-35, 0, Sized(10, 10), 32, 0);
  EXPECT_THAT(Log(),
              ElementsAre("K_ZLookupLStrCache(27, 0, 0)", "Kp_SysEnglishError(-35)",
                          R"(Kp_ReportError(0x70005, 8 error -35 "changing pixel buffer."))"));
}

TEST_F(BufferError, TellsMemoryErrorsFromTheirNeighbours) {
  for (const std::int32_t error : {3, 5, 1, -4, -107, -109, 108}) {
    Report(error, 0, Sized(10, 10), 32, 0);
    EXPECT_EQ(recorder_.Count("Kp_ReportError"), 1) << error;
    EXPECT_EQ(recorder_.Count("K_ReportError"), 0) << error;
  }
  for (const std::int32_t error :
       {std::int32_t{PXL_Err_NO_MEMORY}, std::int32_t{kLayerMemoryFull}}) {
    Report(error, 0, Sized(10, 10), 32, 0);
    EXPECT_EQ(recorder_.Count("Kp_ReportError"), 0) << error;
    EXPECT_EQ(recorder_.Count("K_ReportError"), 1) << error;
  }
}

TEST_F(BufferError, TakesTheTextOfTheCatalogueForNoFormat) {
  const char* key = PXL_G_zref->entries[27].key;
  PXL_G_zref->entries[27].key = "key=100 %d%% %s";
  Report(-1, 0, Sized(1, 1), 32, 0);
  PXL_G_zref->entries[27].key = key;
  EXPECT_THAT(Log().back(), HasSubstr("100 %d%% %s"));
}

TEST_F(BufferError, CutsATranslationThatIsLongerThanTheBuffer) {
  const char* key = PXL_G_zref->entries[27].key;
  const std::string longKey = "key=" + std::string(3000, 'x');
  PXL_G_zref->entries[27].key = longKey.c_str();
  Report(-1, 0, Sized(1, 1), 32, 0);
  PXL_G_zref->entries[27].key = key;
  EXPECT_EQ(Kp_G_buffer, std::string(sizeof Kp_G_buffer - 1, 'x'));
}

TEST_F(BufferError, OfMemoryLeavesThePendingReportAlone) {
  Kp_G_err_buf = 5;
  std::snprintf(Kp_G_buffer, sizeof Kp_G_buffer, "mine");
  Report(PXL_Err_NO_MEMORY, 0, Sized(10, 10), 32, 0);
  EXPECT_EQ(Kp_G_err_buf, 5);
  EXPECT_STREQ(Kp_G_buffer, "mine");
}

TEST_F(BufferError, OfMemoryNamesTheSizeOfTheImage) {
  Report(PXL_Err_NO_MEMORY, 0, Rect{-10, 100, 30, 350}, 64, 0);
  const std::string page = HelpPage();
  EXPECT_THAT(
      Log(),
      ElementsAre(
          std::string(R"(K_ZStringToUTF16String("$$$/OV/PXL/CannotAllocateEnoughMemory=)") +
              kShortageText + page + "\")",
          "NumberToString(250)", "NumberToString(40)", "NumberToString(16)",
          std::string("ReplaceInString(u\"") + kShortageText + page +
              R"(", u"250", u"40", u"16", u"", u"", u"", u"", u"", u"", u""))",
          "K_ReportError(0x70005, 8, u\"Unable to allocate enough memory to render the current "
          "frame (250 x 40 @ 16 bpc). Either decrease the memory requirements for the rendering "
          "of this frame, or install more RAM. (12805). For more information, see " +
              page + "\")"));
}

TEST_F(BufferError, BeyondTheLimitNamesTheGigabytesToo) {
  Report(kLayerMemoryFull, 0, Sized(20000, 10000), 128, 3221225472);
  const std::string page = HelpPage();
  EXPECT_THAT(
      Log(),
      ElementsAre(std::string(R"(K_ZStringToUTF16String("$$$/OV/PXL/MemoryLimitReached=)") +
                      kLimitText + page + "\")",
                  "NumberToString(20000)", "NumberToString(10000)", "NumberToString(32)",
                  "NumberToString(3.0, 1, 1, 0, 31)",
                  std::string("ReplaceInString(u\"") + kLimitText + page +
                      R"(", u"20000", u"10000", u"32", u"3.0", u"", u"", u"", u"", u"", u""))",
                  "K_ReportError(0x70005, 8, u\"Image buffers of size 20000 x 10000 @ 32 bpc (3.0 "
                  "GB) exceed internal limits. Decrease the memory requirements for the rendering "
                  "of this frame. (12804). For more information, see " +
                      page + "\")"));
}

TEST_F(BufferError, DrawsTheLineAt2GiB) {
  Report(PXL_Err_NO_MEMORY, 0, Sized(1, 1), 32, 2147483647);
  EXPECT_THAT(Log().back(), HasSubstr("(12805)"));
  EXPECT_EQ(Gigabytes(), "");
  Report(PXL_Err_NO_MEMORY, 0, Sized(1, 1), 32, 2147483648);
  EXPECT_THAT(Log().back(), HasSubstr("(12804)"));
  EXPECT_EQ(Gigabytes(), "NumberToString(2.0, 1, 1, 0, 31)");
}

TEST_F(BufferError, TakesTheSizeItIsGivenForTheRight) {
  Report(PXL_Err_NO_MEMORY, 16384, Sized(1, 1), 32, 5368709120);
  EXPECT_EQ(Gigabytes(), "NumberToString(5.0, 1, 1, 0, 31)");
  Report(PXL_Err_NO_MEMORY, 1 << 30, Sized(1, 30000), 32, 1);
  EXPECT_EQ(Gigabytes(), "");
}

TEST_F(BufferError, ComputesTheSizeFromTheRowBytes) {
  Report(PXL_Err_NO_MEMORY, 1 << 20, Sized(1, 3072), 32, 0);
  EXPECT_EQ(Gigabytes(), "NumberToString(3.0, 1, 1, 0, 31)");
  Report(PXL_Err_NO_MEMORY, -(1 << 20), Sized(1, 3072), 32, 0);
  EXPECT_EQ(Gigabytes(), "NumberToString(-3.0, 1, 1, 0, 31)");
}

TEST_F(BufferError, ComputesTheSizeFromTheDepthWithoutRowBytes) {
  Report(PXL_Err_NO_MEMORY, 0, Sized(32767, 8192), 128, 0);
  EXPECT_EQ(Gigabytes(), "NumberToString(4.0, 1, 1, 0, 31)");
  Report(PXL_Err_NO_MEMORY, 0, Sized(32767, 8192), 64, 0);
  EXPECT_EQ(Gigabytes(), "");
  Report(PXL_Err_NO_MEMORY, 0, Rect{-32768, -32768, 32767, 32767}, 8, 0);
  EXPECT_EQ(Gigabytes(), "NumberToString(4.0, 1, 1, 0, 31)");
  Report(PXL_Err_NO_MEMORY, 0, Rect{-32768, -32768, 32767, 32767}, 15, 0);
  EXPECT_EQ(Gigabytes(), "NumberToString(4.0, 1, 1, 0, 31)");
}

TEST_F(BufferError, OfDepthsBelowAByteComputesNoSize) {
  Report(PXL_Err_NO_MEMORY, 0, Sized(32767, 32767), 4, 0);
  EXPECT_THAT(Log().back(), HasSubstr("(12805)"));
  Report(PXL_Err_NO_MEMORY, 0, Sized(-32767, 32767), -4, 0);
  EXPECT_THAT(Log().back(), HasSubstr("(12805)"));
  Report(PXL_Err_NO_MEMORY, 0, Sized(32767, 32767), -4, 0);
  EXPECT_THAT(Log().back(), HasSubstr("(12805)"));
}

TEST_F(BufferError, TakesANegativeSizeForBeyondTheLimit) {
  Report(PXL_Err_NO_MEMORY, 0, Sized(-10, 10), 32, 0);
  EXPECT_THAT(Log().back(),
              AllOf(HasSubstr("size -10 x 10 @ 8 bpc (-0.0 GB)"), HasSubstr("(12804)")));
  Report(PXL_Err_NO_MEMORY, 0, Rect{0, 10000, 10000, -20000}, 128, 0);
  EXPECT_EQ(Gigabytes(), "NumberToString(-4.5, 1, 1, 0, 31)");
}

TEST_F(BufferError, SubtractsCoordinatesInFullWidth) {
  Report(PXL_Err_NO_MEMORY, 0, Rect{32767, 32767, -32768, -32768}, 32, 0);
  EXPECT_THAT(Log().back(), HasSubstr("size -65535 x -65535 @"));
  Report(PXL_Err_NO_MEMORY, 0, Rect{-32768, -32768, 32767, 32767}, 32, 0);
  EXPECT_THAT(Log().back(), HasSubstr("size 65535 x 65535 @"));
}

TEST_F(BufferError, CountsFourChannelsAtAnyDepth) {
  const struct {
    std::int32_t depth;
    const char* text;
  } depths[] = {{8, "@ 2 bpc"},    {16, "@ 4 bpc"}, {32, "@ 8 bpc"}, {64, "@ 16 bpc"},
                {128, "@ 32 bpc"}, {3, "@ 0 bpc"},  {-7, "@ -1 bpc"}};
  for (const auto& [depth, text] : depths) {
    Report(PXL_Err_NO_MEMORY, 0, Sized(1, 1), depth, 1);
    EXPECT_THAT(Log().back(), HasSubstr(text));
  }
}

TEST_F(BufferError, OfALargeImageBelowTheLimitIsAShortage) {
  Report(PXL_Err_NO_MEMORY, 65536, Sized(4096, 4096), 128, 0);
  EXPECT_THAT(Log().back(), AllOf(HasSubstr("(4096 x 4096 @ 32 bpc)"), HasSubstr("(12805)")));
}

TEST_F(BufferError, GoesUnderTheCodeOfItsSite) {
  const Rect bounds = Sized(1, 1);
  PXLp_ReportBufferError(PXLp_Site::ResizeFrame, 4, {bounds, 32});
  EXPECT_THAT(Log().back(), StartsWith("K_ReportError(0x70036, 8, "));
  PXLp_ReportBufferError(PXLp_Site::ReloadPixels, 1, {bounds, 32});
  EXPECT_THAT(Log().back(), StartsWith("Kp_ReportError(0x70034, 8 "));
}

TEST_F(MemoryMessage, GivesZeroWhenItIsReported) {
  EXPECT_EQ(PXLp_ReportMemoryMessage(PXLp_Site::SurfaceWorld, {Sized(2, 3), 32}, 1), PXL_Err_NONE);
  EXPECT_THAT(Log().back(), StartsWith("K_ReportError(0x70027, 8, "));
}

TEST_F(MemoryMessage, HandsAnExceptionToTheLibraryAndGivesItsCode) {
  recorder_.Throw("ReplaceInString", [] { throw std::runtime_error("no text"); });
  EXPECT_EQ(PXLp_ReportMemoryMessage(PXLp_Site::FrameWorld, {Sized(2, 3), 32}, 1), 77);
  EXPECT_EQ(Log().back(), R"(K_TranslateAndReportException("no text"))");
  EXPECT_EQ(recorder_.Count("K_ReportError"), 0);
}

TEST_F(MemoryMessage, GivesAThrownLongAsItIs) {
  recorder_.Throw("K_ReportError", [] { throw -0x12345678L; });
  EXPECT_EQ(PXLp_ReportMemoryMessage(PXLp_Site::FrameWorld, {Sized(2, 3), 32}, 1), -0x12345678);
  EXPECT_EQ(recorder_.Count("K_TranslateAndReportException"), 0);
  recorder_.Throw("K_ZStringToUTF16String", [] { throw 0L; });
  EXPECT_EQ(PXLp_ReportMemoryMessage(PXLp_Site::FrameWorld, {Sized(2, 3), 32}, 1), PXL_Err_NONE);
}

TEST_F(MemoryMessage, TakesAnythingElseThrownForLackOfMemory) {
  recorder_.Throw("NumberToString", [] { throw "a text"; });
  EXPECT_EQ(PXLp_ReportMemoryMessage(PXLp_Site::FrameWorld, {Sized(2, 3), 32}, 1),
            PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.Count("K_TranslateAndReportException"), 0);
  EXPECT_EQ(recorder_.Count("K_ReportError"), 0);
}

// The library may have no memory to report the exception with.
TEST_F(MemoryMessage, LetsNothingOutThatTheReportOfAnExceptionThrows) {
  recorder_.Throw("ReplaceInString", [] { throw std::runtime_error("no text"); });
  recorder_.Throw("K_TranslateAndReportException", [] { throw std::bad_alloc(); });
  EXPECT_EQ(PXLp_ReportMemoryMessage(PXLp_Site::FrameWorld, {Sized(2, 3), 32}, 1),
            PXL_Err_NO_MEMORY);
}

TEST_F(MemoryMessage, ThatFailsDoesNotDisturbTheReportingCall) {
  for (const char* call :
       {"K_ZStringToUTF16String", "NumberToString", "ReplaceInString", "K_ReportError"}) {
    recorder_.Throw(call, [] { throw std::runtime_error("any"); });
    const Rect bounds = Sized(1, 1);
    EXPECT_NO_THROW(PXLp_ReportBufferError(PXLp_Site::FrameWorld, 4, {bounds, 32})) << call;
  }
}

TEST_F(HostRequest, GoesUnderItsOwnCodeAndGivesZero) {
  EXPECT_EQ(PXL_ReportWorldAllocationFailure(4, 65536, 4096, 2048, 128), PXL_Err_NONE);
  EXPECT_THAT(Log().back(),
              AllOf(StartsWith("K_ReportError(0x70042, 8, "), HasSubstr("(4096 x 2048 @ 32 bpc)")));
  EXPECT_EQ(PXL_ReportWorldAllocationFailure(kLayerError, 0, 1, 1, 32), PXL_Err_NONE);
  EXPECT_THAT(Log().back(), StartsWith("Kp_ReportError(0x70042, 8 error -50 "));
  ForgetLog();
  EXPECT_EQ(PXL_ReportWorldAllocationFailure(0, 0, 1, 1, 32), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(HostRequest, UsesTheRowBytesAndElseTheDepth) {
  PXL_ReportWorldAllocationFailure(4, 1 << 20, 1, 3072, 32);
  EXPECT_THAT(Log().back(), HasSubstr("(3.0 GB)"));
  PXL_ReportWorldAllocationFailure(4, 0, 32767, 8192, 128);
  EXPECT_THAT(Log().back(), HasSubstr("(4.0 GB)"));
  PXL_ReportWorldAllocationFailure(4, 0, 32767, 32767, 4);
  EXPECT_THAT(Log().back(), HasSubstr("(12805)"));
}

TEST_F(HostRequest, ReadsSizesAsCoordinates) {
  PXL_ReportWorldAllocationFailure(4, 0, static_cast<std::int16_t>(40000), 10, 32);
  EXPECT_THAT(Log().back(), HasSubstr("size -25536 x 10 @ 8 bpc"));
  PXL_ReportWorldAllocationFailure(4, 0, 10, static_cast<std::int16_t>(40000), -32);
  EXPECT_THAT(Log().back(), HasSubstr("10 x -25536 @ -8 bpc"));
}
