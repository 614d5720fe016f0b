// The provider of pixels in a mapped file.
#include "memory/mapped_provider.h"

#include <functional>
#include <locale>
#include <stdexcept>

#include "memory/mapped_provider_reset.h"
#include "tests/support/module/contract.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

constexpr const char* kMessage = R"(K_ZStringToUTF16String("$$$/ov/PXL_MemMappedFile/MapFailre=)"
                                 R"(Unable to map buffer into application memory."))";
constexpr const char* kReport =
    R"(K_ReportError(0x0, 4, u"Unable to map buffer into application memory."))";

void ThrowException() {
  throw std::runtime_error("broken");
}
void ThrowLong() {
  throw 9L;
}
void ThrowZero() {
  throw 0L;
}
void ThrowAnything() {
  throw "broken";
}

}  // namespace

class MappedProvider : public Contract {
 protected:
  ~MappedProvider() override {
    recorder_.OnCall(nullptr);
    if (provider_ != nullptr) provider_->release(&provider_);
  }
  std::int32_t New(std::uint64_t size = 4096) { return PXLp_NewMappedProvider(size, &provider_); }
  // One whose making is not looked at.
  void Have(std::uint64_t size = 4096) {
    ASSERT_EQ(New(size), PXL_Err_NONE);
    ForgetLog();
  }
  std::int32_t Map() { return provider_->mapPixels(provider_->context, &frame_); }
  std::int32_t Unmap() { return provider_->unmapPixels(provider_->context, &frame_); }
  std::int32_t Free() { return provider_->freePixels(provider_->context, &frame_); }
  std::int32_t Release() { return provider_->release(&provider_); }

  PXL_PixelProvider* provider_ = nullptr;
  void* frame_ = nullptr;
};

TEST_F(MappedProvider, IsMadeWithAFile) {
  EXPECT_EQ(New(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("MemoryMappedFile()", R"(Init("zelk.ov.pxlmapfile.1", 4096, 101))",
                                 "K_AccountSystemAllocation(4096)"));
  ASSERT_NE(provider_, nullptr);
  EXPECT_NE(provider_->context, nullptr);
  EXPECT_NE(provider_->mapPixels, nullptr);
  EXPECT_NE(provider_->unmapPixels, nullptr);
  EXPECT_NE(provider_->freePixels, nullptr);
  EXPECT_NE(provider_->release, nullptr);
  EXPECT_THAT(recorder_.Outstanding(), ElementsAre("file1"));
}

TEST_F(MappedProvider, StandsInItsPlaceBeforeTheFileIsMade) {
  bool seen = false;
  recorder_.OnCall([&](const std::string& name) {
    if (name != "MemoryMappedFile" && name != "Init" && name != "K_AccountSystemAllocation") return;
    seen = true;
    ASSERT_NE(provider_, nullptr);
    EXPECT_EQ(provider_->context, nullptr);
    EXPECT_NE(provider_->release, nullptr);
    EXPECT_EQ(PXLp_AccessNextFileNumber(), 2U);
  });
  EXPECT_EQ(New(), PXL_Err_NONE);
  EXPECT_TRUE(seen);
}

TEST_F(MappedProvider, CountsItsNamesOnAlsoAfterAFailure) {
  EXPECT_EQ(PXLp_AccessNextFileNumber(), 1U);
  recorder_.Fail("Init");
  EXPECT_EQ(New(), PXL_Err_NO_MEMORY);
  Release();
  EXPECT_EQ(New(), PXL_Err_NONE);
  EXPECT_THAT(recorder_.LogOf({"Init"}), ElementsAre(R"(Init("zelk.ov.pxlmapfile.1", 4096, 101))",
                                                     R"(Init("zelk.ov.pxlmapfile.2", 4096, 101))"));
}

TEST_F(MappedProvider, PrintsItsNumberWithASign) {
  PXLp_AccessNextFileNumber() = 2147483647;
  EXPECT_EQ(New(), PXL_Err_NONE);
  Release();
  EXPECT_EQ(New(), PXL_Err_NONE);
  Release();
  PXLp_AccessNextFileNumber() = 4294967295;
  EXPECT_EQ(New(), PXL_Err_NONE);
  EXPECT_EQ(PXLp_AccessNextFileNumber(), 0U);
  EXPECT_THAT(recorder_.LogOf({"Init"}),
              ElementsAre(R"(Init("zelk.ov.pxlmapfile.2147483647", 4096, 101))",
                          R"(Init("zelk.ov.pxlmapfile.-2147483648", 4096, 101))",
                          R"(Init("zelk.ov.pxlmapfile.-1", 4096, 101))"));
}

// The program around the module may have changed the global locale.
TEST_F(MappedProvider, PrintsItsNumberInTheClassicLocale) {
  struct Grouping : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
  };
  const std::locale before = std::locale::global(std::locale(std::locale(), new Grouping));
  PXLp_AccessNextFileNumber() = 1234567;
  EXPECT_EQ(New(), PXL_Err_NONE);
  std::locale::global(before);
  EXPECT_EQ(recorder_.LogOf({"Init"})[0], R"(Init("zelk.ov.pxlmapfile.1234567", 4096, 101))");
}

TEST_F(MappedProvider, WithoutAFileStaysInItsPlaceUnbooked) {
  recorder_.Fail("Init");
  EXPECT_EQ(New(), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(),
              ElementsAre("MemoryMappedFile()", R"(Init("zelk.ov.pxlmapfile.1", 4096, 101))",
                          "~MemoryMappedFile()", R"(K_TranslateAndReportException("no file"))"));
  ASSERT_NE(provider_, nullptr);
  EXPECT_EQ(provider_->context, nullptr);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(MappedProvider, WithoutAFileAcceptsAllOperations) {
  recorder_.Fail("Init");
  New();
  ForgetLog();
  int pixels = 0;
  frame_ = &pixels;
  EXPECT_EQ(Map(), PXL_Err_NONE);
  EXPECT_EQ(Unmap(), PXL_Err_NONE);
  EXPECT_EQ(Free(), PXL_Err_NONE);
  EXPECT_EQ(frame_, &pixels);
  EXPECT_EQ(Release(), PXL_Err_NONE);
  EXPECT_EQ(provider_, nullptr);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(MappedProvider, TurnsEveryFailureOfItsFileIntoLackOfMemoryUnlessItsCodeIsZero) {
  const struct {
    void (*thrower)();
    std::int32_t translated;
    std::int32_t status;
  } failures[] = {{.thrower = ThrowException, .translated = 77, .status = PXL_Err_NO_MEMORY},
                  {.thrower = ThrowException, .translated = -1, .status = PXL_Err_NO_MEMORY},
                  {.thrower = ThrowException, .translated = 0, .status = PXL_Err_NONE},
                  {.thrower = ThrowLong, .translated = 0, .status = PXL_Err_NO_MEMORY},
                  {.thrower = ThrowZero, .translated = 77, .status = PXL_Err_NONE},
                  {.thrower = ThrowAnything, .translated = 0, .status = PXL_Err_NO_MEMORY}};
  for (const auto& failure : failures) {
    Unload();
    recorder_.script.translatedException = failure.translated;
    recorder_.Throw("Init", failure.thrower);
    EXPECT_EQ(New(), failure.status);
    EXPECT_EQ(recorder_.Count("K_AccountSystemAllocation"), 0);
    EXPECT_EQ(recorder_.Count("K_TranslateAndReportException"),
              failure.thrower == ThrowException ? 1 : 0);
    EXPECT_EQ(provider_->context, nullptr);
    EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
    Release();
  }
}

TEST_F(MappedProvider, WithoutMemoryForItselfLeavesItsPlaceAlone) {
  recorder::FailNewOf(sizeof(PXL_PixelProvider));
  EXPECT_EQ(New(), PXL_Err_NO_MEMORY);
  EXPECT_EQ(provider_, nullptr);
  EXPECT_EQ(PXLp_AccessNextFileNumber(), 1U);
  EXPECT_EQ(recorder_.Count("K_TranslateAndReportException"), 1);
  EXPECT_EQ(Log().size(), 1U);
}

// The name takes 20 bytes here, and 39 when its number is added.
TEST_F(MappedProvider, WithoutMemoryForItsNameStaysInItsPlace) {
  for (const std::size_t size : {std::size_t{20}, std::size_t{39}}) {
    Unload();
    recorder::FailNewOf(size);
    EXPECT_EQ(New(), PXL_Err_NO_MEMORY) << size;
    recorder::FailNewOf(0);
    ASSERT_NE(provider_, nullptr);
    EXPECT_EQ(provider_->context, nullptr);
    EXPECT_EQ(recorder_.Count("Init"), 0);
    Release();
  }
}

TEST_F(MappedProvider, WithoutMemoryForItsFileStaysInItsPlace) {
  recorder::FailNewOf(sizeof(vetrix::MemoryMappedFile));
  EXPECT_EQ(New(), PXL_Err_NO_MEMORY);
  ASSERT_NE(provider_, nullptr);
  EXPECT_EQ(provider_->context, nullptr);
  EXPECT_EQ(PXLp_AccessNextFileNumber(), 2U);
  EXPECT_EQ(recorder_.Count("K_AccountSystemAllocation"), 0);
}

TEST_F(MappedProvider, MapsInsideThePurgeLoopAndMovesTheBytes) {
  Have();
  EXPECT_EQ(Map(), PXL_Err_NONE);
  EXPECT_EQ(recorder_.NameOf(frame_), "view");
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(4096, 1)", "GetAddress()",
                                 "K_AccountSystemAllocation(-4096)", "K_AccountAllocation(4096)"));
}

TEST_F(MappedProvider, BooksTheLowHalfOfALargeSize) {
  const struct {
    std::uint64_t size;
    const char* more;
    const char* less;
  } sizes[] = {{.size = 0x100000010, .more = "16", .less = "-16"},
               {.size = 0x80000000, .more = "-2147483648", .less = "-2147483648"},
               {.size = 0xFFFFFFFF, .more = "-1", .less = "1"},
               {.size = 0x200000000, .more = "0", .less = "0"}};
  for (const auto& [size, more, less] : sizes) {
    Unload();
    recorder_.script.fileSize = size;
    Have(16);
    EXPECT_EQ(Map(), PXL_Err_NONE);
    EXPECT_EQ(Unmap(), PXL_Err_NONE);
    EXPECT_EQ(Free(), PXL_Err_NONE);
    const std::string system = "K_AccountSystemAllocation(";
    const std::string application = "K_AccountAllocation(";
    EXPECT_THAT(
        recorder_.LogOf({"K_PurgeLoop", "K_AccountSystemAllocation", "K_AccountAllocation"}),
        ElementsAre("K_PurgeLoop(" + std::to_string(size) + ", 1)", system + less + ")",
                    application + more + ")", application + less + ")", system + more + ")",
                    system + less + ")"));
    Release();
  }
}

TEST_F(MappedProvider, BooksWhatWasAskedForWhenItIsMade) {
  recorder_.script.fileSize = 8192;
  EXPECT_EQ(New(4096), PXL_Err_NONE);
  EXPECT_EQ(Log().back(), "K_AccountSystemAllocation(4096)");
}

TEST_F(MappedProvider, BooksTheLowHalfOfWhatWasAskedForWhenItIsMade) {
  EXPECT_EQ(New(0x100000010), PXL_Err_NONE);
  EXPECT_EQ(Log().back(), "K_AccountSystemAllocation(16)");
}

TEST_F(MappedProvider, WithoutAnAddressReportsEachAttempt) {
  Have();
  int before = 0;
  frame_ = &before;
  recorder_.FailAlways("GetAddress");
  EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
  EXPECT_EQ(frame_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(4096, 1)", "GetAddress()", kMessage, kReport,
                                 "GetAddress()", kMessage, kReport));
}

TEST_F(MappedProvider, DoesNotForgetAFailedAttempt) {
  Have();
  recorder_.Fail("GetAddress");
  EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.NameOf(frame_), "view");
  EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(4096, 1)", "GetAddress()", kMessage, kReport,
                                 "GetAddress()", kMessage, kReport));
  // The next loop starts afresh.
  EXPECT_EQ(Map(), PXL_Err_NONE);
}

TEST_F(MappedProvider, TakesAnyThrowOfTheMappingForAFailedAttempt) {
  for (const auto thrower : {ThrowException, ThrowLong, ThrowZero, ThrowAnything}) {
    Unload();
    Have();
    int before = 0;
    frame_ = &before;
    recorder_.script.purgeRounds = 0;
    recorder_.Throw("GetAddress", thrower);
    EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
    EXPECT_EQ(frame_, &before);
    EXPECT_THAT(Log(), ElementsAre("K_PurgeLoop(4096, 1)", "GetAddress()", kMessage, kReport));
    Release();
  }
}

TEST_F(MappedProvider, SaysWhetherAnAttemptIsDoneAndGivesZero) {
  Have();
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 9;
    EXPECT_EQ(attempt(context, &done), PXL_Err_NONE);
    EXPECT_EQ(done, 1);
    recorder::Current().Fail("GetAddress");
    done = 9;
    EXPECT_EQ(attempt(context, &done), PXL_Err_NONE);
    EXPECT_EQ(done, 0);
    done = 9;
    EXPECT_EQ(attempt(context, &done), PXL_Err_NONE);
    EXPECT_EQ(done, 0);
    return 0;
  };
  EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.Count("K_ReportError"), 2);
  EXPECT_EQ(recorder_.Count("K_AccountAllocation"), 0);
}

TEST_F(MappedProvider, GivesLackOfMemoryForAnyCodeOfTheLoop) {
  Have();
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt attempt, void* context) {
    std::uint8_t done = 0;
    attempt(context, &done);
    return 91;
  };
  EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.NameOf(frame_), "view");
  EXPECT_EQ(recorder_.Count("K_AccountAllocation"), 0);
}

TEST_F(MappedProvider, GivesLackOfMemoryWhenTheLoopNeverTried) {
  Have();
  recorder_.script.purgeLoop = [](std::uint64_t, K_PurgeAttempt, void*) { return 0; };
  EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
  EXPECT_EQ(recorder_.Count("K_AccountSystemAllocation"), 0);
}

TEST_F(MappedProvider, CatchesWhatTheReportOfAFailedAttemptThrows) {
  for (const char* call : {"K_ZStringToUTF16String", "K_ReportError"}) {
    Unload();
    Have();
    recorder_.FailAlways("GetAddress");
    recorder_.Throw(call, ThrowException);
    EXPECT_EQ(Map(), PXL_Err_NO_MEMORY);
    EXPECT_EQ(recorder_.Count("GetAddress"), 1);
    EXPECT_EQ(Log().back(), R"(K_TranslateAndReportException("broken"))");
    Release();
  }
}

TEST_F(MappedProvider, UnmapsAfterMovingTheBytesBack) {
  Have();
  Map();
  ForgetLog();
  EXPECT_EQ(Unmap(), PXL_Err_NONE);
  EXPECT_EQ(frame_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_AccountAllocation(-4096)", "K_AccountSystemAllocation(4096)",
                                 "UnmapMemory()", "CloseFileHandleIfPossible()"));
}

TEST_F(MappedProvider, ThatIsNotMappedHasNothingToUnmap) {
  Have();
  EXPECT_EQ(Unmap(), PXL_Err_NONE);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(MappedProvider, ResetsItsFileWithoutTouchingTheApplicationsTotal) {
  Have();
  Map();
  ForgetLog();
  EXPECT_EQ(Free(), PXL_Err_NONE);
  EXPECT_EQ(frame_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("K_AccountSystemAllocation(-4096)", "Reset()"));
}

TEST_F(MappedProvider, ResetsAFileThatIsNotMapped) {
  Have();
  EXPECT_EQ(Free(), PXL_Err_NONE);
  EXPECT_THAT(Log(), ElementsAre("K_AccountSystemAllocation(-4096)", "Reset()"));
}

TEST_F(MappedProvider, ReleasesFileAndRecord) {
  Have();
  EXPECT_EQ(Release(), PXL_Err_NONE);
  EXPECT_EQ(provider_, nullptr);
  EXPECT_THAT(Log(), ElementsAre("~MemoryMappedFile()"));
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

TEST_F(MappedProvider, ReleasesNothingWhereNothingIs) {
  Have();
  PXL_PixelProvider* none = nullptr;
  EXPECT_EQ(provider_->release(&none), 0);
  EXPECT_EQ(provider_->release(nullptr), 0);
  EXPECT_THAT(Log(), IsEmpty());
}

// Failures of the calls that an operation makes, with what they leave undone.
struct FailingCall {
  const char* name;
  int nth;  // which of the operation's calls of that name
  bool frameStays;
};

class FailingOperation : public MappedProvider {
 protected:
  // Runs an operation of a mapped provider with each call failing each way.
  void ExpectCaught(const std::vector<FailingCall>& calls,
                    const std::function<std::int32_t()>& operation) {
    for (const FailingCall& call : calls) {
      ExpectCaught(call, ThrowException, 77, PXL_Err_NO_MEMORY, operation);
      ExpectCaught(call, ThrowException, 0, PXL_Err_NONE, operation);
      ExpectCaught(call, ThrowLong, 0, PXL_Err_NO_MEMORY, operation);
      ExpectCaught(call, ThrowZero, 77, PXL_Err_NONE, operation);
      ExpectCaught(call, ThrowAnything, 0, PXL_Err_NO_MEMORY, operation);
    }
  }

 private:
  void ExpectCaught(const FailingCall& call, void (*thrower)(), std::int32_t translated,
                    std::int32_t status, const std::function<std::int32_t()>& operation) {
    SCOPED_TRACE(::testing::Message() << call.name << " " << call.nth);
    Unload();
    Have();
    Map();
    ForgetLog();
    recorder_.script.translatedException = translated;
    recorder_.Throw(call.name, thrower, call.nth);
    EXPECT_EQ(operation(), status);
    EXPECT_EQ(frame_ != nullptr, call.frameStays);
    EXPECT_EQ(recorder_.Count("K_TranslateAndReportException"), thrower == ThrowException ? 1 : 0);
    if (provider_ != nullptr) Release();
    EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
    frame_ = nullptr;
  }
};

TEST_F(FailingOperation, OfMappingIsCaught) {
  ExpectCaught({{"K_PurgeLoop", 1, true},
                {"K_AccountSystemAllocation", 1, true},
                {"K_AccountAllocation", 1, true}},
               [this] { return Map(); });
}

TEST_F(FailingOperation, OfUnmappingIsCaughtAndKeepsTheFrame) {
  ExpectCaught({{"K_AccountAllocation", 1, true},
                {"K_AccountSystemAllocation", 1, true},
                {"UnmapMemory", 1, true},
                {"CloseFileHandleIfPossible", 1, true}},
               [this] { return Unmap(); });
}

TEST_F(FailingOperation, OfResettingIsCaughtAndKeepsTheFrame) {
  ExpectCaught({{"K_AccountSystemAllocation", 1, true}, {"Reset", 1, true}},
               [this] { return Free(); });
}

TEST_F(FailingOperation, OfUnmappingLeavesTheBytesMoved) {
  Have();
  Map();
  ForgetLog();
  recorder_.Throw("UnmapMemory", ThrowLong);
  EXPECT_EQ(Unmap(), PXL_Err_NO_MEMORY);
  EXPECT_THAT(Log(), ElementsAre("K_AccountAllocation(-4096)", "K_AccountSystemAllocation(4096)",
                                 "UnmapMemory()"));
}

TEST_F(FailingOperation, OfBookingTheFileLosesTheFileAndNotTheRecord) {
  recorder_.Throw("K_AccountSystemAllocation", ThrowLong);
  EXPECT_EQ(New(), PXL_Err_NO_MEMORY);
  ASSERT_NE(provider_, nullptr);
  EXPECT_EQ(provider_->context, nullptr);
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

// The code that a long carries is its low half.
TEST_F(FailingOperation, WithAWideCodeGoesByItsLowHalf) {
  if (sizeof(long) == 4) GTEST_SKIP() << "long has no high half here";
  recorder_.Throw("Init", [] { throw static_cast<long>(0x100000000); });
  EXPECT_EQ(New(), PXL_Err_NONE);
}
