// Tests of the guards, fences and patterns of recycled pointers.
#include <gmock/gmock.h>

#include <cstring>

#include "tests/stand_ins/K/memory_fixture.h"
#include "tests/support/system/sanitizers.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint64_t kSize = 10000;
constexpr std::uint64_t kPage = 4096;

class PoolChecks : public MemoryTest {
 protected:
  ~PoolChecks() override { K_SetPoolChecks(0); }

  static char* New(std::uint64_t size = kSize) { return static_cast<char*>(NewBlock(size)); }

  std::vector<std::string> TextsOf(std::uint32_t code) {
    std::vector<std::string> texts;
    for (const KeptReport& report : reports_.Take()) {
      EXPECT_EQ(report.code, code);
      EXPECT_EQ(report.cls, K_ReportClass_ERROR);
      texts.push_back(report.text);
    }
    return texts;
  }
};

TEST_F(PoolChecks, AreOffAtFirst) {
  EXPECT_EQ(K_GetPoolChecks(), 0U);
}

TEST_F(PoolChecks, CanBeReadBackWithoutUnknownBits) {
  K_SetPoolChecks(~std::uint32_t{0});
  EXPECT_EQ(K_GetPoolChecks(),
            std::uint32_t{K_PoolCheck_GUARDS | K_PoolCheck_FENCES | K_PoolCheck_FILL});
}

TEST_F(PoolChecks, KeepBlocksOnPagesAndWhole) {
  for (std::uint32_t checks = 0; checks < 8; ++checks) {
    K_SetPoolChecks(checks);
    for (const std::uint64_t size : {std::uint64_t{0}, kSize, std::uint64_t{3} << 20}) {
      for (int round = 0; round < 3; ++round) {
        char* base = New(size);
        ASSERT_NE(base, nullptr);
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(base) % kPage, 0U);
        std::memset(base, round, size);
        K_FreeRecycledPtr(base);
      }
    }
  }
  EXPECT_THAT(reports_.Take(), IsEmpty());
}

TEST_F(PoolChecks, ReportAByteWrittenPastTheEnd) {
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  char* base = New();
  base[kSize] = 1;
  EXPECT_THAT(reports_.Take(), IsEmpty());
  K_FreeRecycledPtr(base);
  EXPECT_THAT(TextsOf(K_Code_GUARD),
              ElementsAre("recycled pointer PXL WORLD (10000 bytes, owner 0x70003) was written "
                          "past its end: byte 10000"));
}

TEST_F(PoolChecks, ReportAByteWrittenBeforeTheStart) {
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  char* base = New();
  base[-3] = 1;
  K_FreeRecycledPtr(base);
  EXPECT_THAT(TextsOf(K_Code_GUARD),
              ElementsAre("recycled pointer PXL WORLD (10000 bytes, owner 0x70003) was written "
                          "before its start: byte -3"));
}

TEST_F(PoolChecks, SeeTheWholeGuardOnBothSides) {
  K_SetPoolChecks(K_PoolCheck_GUARDS | K_PoolCheck_FENCES);
  constexpr std::ptrdiff_t kCapacity = 3 * kPage;
  for (const std::ptrdiff_t place :
       {-std::ptrdiff_t{kPage}, std::ptrdiff_t{-1}, std::ptrdiff_t{kSize}, kCapacity - 1, kCapacity,
        kCapacity + std::ptrdiff_t{kPage} - 1}) {
    char* base = New();
    base[place] = 0;
    K_FreeRecycledPtr(base);
    EXPECT_EQ(TextsOf(K_Code_GUARD).size(), 1U) << place;
  }
}

TEST_F(PoolChecks, ReportBothSidesOfABlock) {
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  char* base = New();
  base[-1] = 0;
  base[kSize] = 0;
  K_FreeRecycledPtr(base);
  EXPECT_EQ(TextsOf(K_Code_GUARD).size(), 2U);
}

TEST_F(PoolChecks, WriteNewGuardsForAReUsedBlock) {
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  char* base = New();
  base[kSize] = 0;
  K_FreeRecycledPtr(base);
  EXPECT_EQ(reports_.Take().size(), 1U);
  // Longer within the same pages: bytes of the old guard now belong to the block.
  char* again = New(kSize + 100);
  EXPECT_EQ(again, base);
  std::memset(again, 0, kSize + 100);
  K_FreeRecycledPtr(again);
  EXPECT_EQ(New(kSize), base);
  K_FreeRecycledPtr(base);
  EXPECT_THAT(reports_.Take(), IsEmpty());
}

TEST_F(PoolChecks, GoByWhatABlockWasMadeWith) {
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  char* guarded = New();
  K_SetPoolChecks(0);
  char* plain = New();
  K_SetPoolChecks(K_PoolCheck_GUARDS);
  std::memset(plain + kSize, 0, 3 * kPage - kSize);
  guarded[kSize] = 0;
  K_FreeRecycledPtr(plain);
  EXPECT_THAT(reports_.Take(), IsEmpty());
  K_FreeRecycledPtr(guarded);
  EXPECT_EQ(TextsOf(K_Code_GUARD).size(), 1U);
  // Only the block with guards may be re-used.
  EXPECT_EQ(Statistics().keptBlocks, 1U);
}

TEST_F(PoolChecks, ReleaseBlocksKeptWithOtherMargins) {
  K_FreeRecycledPtr(New());
  K_SetPoolChecks(K_PoolCheck_FILL);
  EXPECT_EQ(Statistics().keptBlocks, 1U);
  K_SetPoolChecks(K_PoolCheck_FENCES);
  EXPECT_EQ(Statistics().keptBlocks, 0U);
}

TEST_F(PoolChecks, FillAFreedBlock) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker catches the look at it";
  K_SetPoolChecks(K_PoolCheck_FILL);
  char* base = New();
  std::memset(base, 0, kSize);
  K_FreeRecycledPtr(base);
  EXPECT_EQ(std::string(base, kSize), std::string(kSize, static_cast<char>(K_PoolFreedPattern)));
}

TEST_F(PoolChecks, LeaveAFreedBlockAloneWhenFillingIsOff) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker catches the look at it";
  char* base = New();
  base[17] = 23;
  K_FreeRecycledPtr(base);
  EXPECT_EQ(base[17], 23);
}

TEST_F(PoolChecks, ReportAWriteIntoAFreedBlockWhenItIsUsedAgain) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker catches the write itself";
  K_SetPoolChecks(K_PoolCheck_FILL);
  char* base = New();
  K_FreeRecycledPtr(base);
  base[17] = 0;
  EXPECT_EQ(New(), base);
  EXPECT_THAT(TextsOf(K_Code_STALE),
              ElementsAre("recycled pointer PXL WORLD (10000 bytes, owner 0x70003) was written "
                          "after it was freed: byte 17"));
  K_FreeRecycledPtr(base);
}

TEST_F(PoolChecks, ReportAWriteIntoAFreedBlockWhenItIsReleased) {
  if (kAddressSanitizer) GTEST_SKIP() << "the checker catches the write itself";
  K_SetPoolChecks(K_PoolCheck_FILL);
  char* first = New();
  char* second = New();
  K_FreeRecycledPtr(first);
  K_FreeRecycledPtr(second);
  first[0] = 0;
  second[kSize - 1] = 0;
  K_SetPoolLimit(3 * kPage);
  EXPECT_EQ(TextsOf(K_Code_STALE).size(), 1U);
  K_PurgeHandlesAndCompact();
  EXPECT_EQ(TextsOf(K_Code_STALE).size(), 1U);
}

TEST_F(PoolChecks, DoNotCountTheirPages) {
  K_SetPoolChecks(K_PoolCheck_GUARDS | K_PoolCheck_FENCES);
  AllowMore(3 * kPage);
  char* base = New();
  ASSERT_NE(base, nullptr);
  EXPECT_EQ(Statistics().liveBytes, 3 * kPage);
  K_FreeRecycledPtr(base);
}

class PoolFencesDeathTest : public PoolChecks {
 protected:
  PoolFencesDeathTest() { K_SetPoolChecks(K_PoolCheck_FENCES); }
};

TEST_F(PoolFencesDeathTest, EndTheProgramAtAnAccessBeyondThem) {
  char* block = New();
  volatile char* base = block;
  base[0] = 1;
  base[3 * kPage - 1] = 1;
  EXPECT_DEATH(base[3 * kPage] = 1, "");
  EXPECT_DEATH(base[-1] = 1, "");
  EXPECT_DEATH(static_cast<void>(base[-1]), "");
  K_FreeRecycledPtr(block);
}

TEST_F(PoolFencesDeathTest, StandOutsideTheGuards) {
  K_SetPoolChecks(K_PoolCheck_FENCES | K_PoolCheck_GUARDS);
  char* block = New();
  volatile char* base = block;
  EXPECT_DEATH(base[4 * kPage] = 1, "");
  EXPECT_DEATH(base[-std::ptrdiff_t{kPage} - 1] = 1, "");
  K_FreeRecycledPtr(block);
  EXPECT_THAT(reports_.Take(), IsEmpty());
}

TEST_F(PoolFencesDeathTest, LastInABlockThatIsUsedAgain) {
  K_FreeRecycledPtr(New());
  char* block = New();
  volatile char* base = block;
  EXPECT_GT(Statistics().hits, 0U);
  EXPECT_DEATH(base[3 * kPage] = 1, "");
  K_FreeRecycledPtr(block);
}

}  // namespace
