// The processor's level and its caches.
#include "simd/processor.h"

#include <gtest/gtest.h>

#include <vector>

#include "simd/processor_caches.h"
#include "simd/streaming.h"

namespace {

simd::Caches CachesOf(const std::vector<simd::Cache>& caches) {
  return simd::CachesOf(caches);
}

constexpr std::size_t kKiB = 1024;

}  // namespace

TEST(ProcessorLevels, NeedAllTheirInstructions) {
  using simd::Level;
  EXPECT_EQ(simd::LevelOf({}), Level::Baseline);
  EXPECT_EQ(simd::LevelOf({.ssse3 = true}), Level::Baseline);
  EXPECT_EQ(simd::LevelOf({.sse41 = true}), Level::Baseline);
  EXPECT_EQ(simd::LevelOf({.ssse3 = true, .sse41 = true}), Level::Sse41);
  EXPECT_EQ(simd::LevelOf({.ssse3 = true, .sse41 = true, .avx2 = true}), Level::Sse41);
  EXPECT_EQ(simd::LevelOf({.ssse3 = true, .sse41 = true, .fma = true}), Level::Sse41);
  EXPECT_EQ(simd::LevelOf({.ssse3 = true, .sse41 = true, .avx2 = true, .fma = true}), Level::Avx2);
  EXPECT_EQ(
      simd::LevelOf({.ssse3 = true, .sse41 = true, .avx2 = true, .fma = true, .avx512 = true}),
      Level::Avx512);
}

TEST(ProcessorLevels, NeedThoseBeforeThem) {
  using simd::Level;
  EXPECT_EQ(simd::LevelOf({.avx2 = true, .fma = true, .avx512 = true}), Level::Baseline);
  EXPECT_EQ(simd::LevelOf({.ssse3 = true, .sse41 = true, .avx512 = true}), Level::Sse41);
}

TEST(ProcessorLevels, HaveNames) {
  EXPECT_STREQ(simd::NameOf(simd::Level::Baseline), "baseline");
  EXPECT_STREQ(simd::NameOf(simd::Level::Sse41), "SSE4.1");
  EXPECT_STREQ(simd::NameOf(simd::Level::Avx2), "AVX2");
  EXPECT_STREQ(simd::NameOf(simd::Level::Avx512), "AVX-512");
}

TEST(ProcessorCaches, AreOwnUpToTheSecondLevelAndSharedBeyond) {
  const simd::Caches caches =
      CachesOf({{1, 48 * kKiB, 2}, {2, 2048 * kKiB, 2}, {3, 32768 * kKiB, 16}});
  EXPECT_EQ(caches.own, 2048 * kKiB);
  EXPECT_EQ(caches.shared, 2048 * kKiB);
  EXPECT_EQ(CachesOf({{2, 512 * kKiB, 2}, {3, 32768 * kKiB, 8}}).shared, 4096 * kKiB);
}

TEST(ProcessorCaches, ShareNoLessThanACoreHas) {
  const simd::Caches caches = CachesOf({{1, 32 * kKiB, 1}, {2, 1024 * kKiB, 4}});
  EXPECT_EQ(caches.own, 1024 * kKiB);
  EXPECT_EQ(caches.shared, 1024 * kKiB);
}

TEST(ProcessorCaches, AreSmallWhereTheProcessorTellsNothing) {
  EXPECT_EQ(CachesOf({}).own, 256 * kKiB);
  EXPECT_EQ(CachesOf({}).shared, 1024 * kKiB);
}

TEST(ProcessorCaches, OfThisProcessorAreOfSomeSize) {
  EXPECT_GE(simd::ProcessorCaches().own, 16 * kKiB);
  EXPECT_GE(simd::ProcessorCaches().shared, simd::ProcessorCaches().own);
}

TEST(Streaming, BeginsWhereATransferExceedsACoresOwnCache) {
  const std::size_t own = simd::ProcessorCaches().own;
  EXPECT_EQ(simd::StoresFor(own / 2, own - own / 2), simd::Stores::Caching);
  EXPECT_EQ(simd::StoresFor(own / 2, own - own / 2 + 1), simd::Stores::Streaming);
  EXPECT_EQ(simd::StoresFor(own + 1, 0), simd::Stores::Streaming);
}

TEST(Streaming, BeginsWhereAFillExceedsTheShareOfTheLastLevel) {
  const std::size_t shared = simd::ProcessorCaches().shared;
  EXPECT_EQ(simd::StoresForFill(shared), simd::Stores::Caching);
  EXPECT_EQ(simd::StoresForFill(shared + 1), simd::Stores::Streaming);
}
