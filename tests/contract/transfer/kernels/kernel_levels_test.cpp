// Compares the conversions of every level of this processor with the plain loops.
#include <cstring>
#include <vector>

#include "tests/support/module/levels.h"
#include "tools/proof/floats.h"
#include "tools/proof/shapes.h"
#include "tools/proof/values.h"
#include "transfer/kernels/plain_rows.h"
#include "transfer/kernels/selection.h"

using KernelsOfLevel = EachLevel;

INSTANTIATE_TEST_SUITE_P(Processor, KernelsOfLevel, ::testing::ValuesIn(simd::kAllLevels),
                         LevelName);

TEST_P(KernelsOfLevel, EqualThePlainLoopsInEveryShape) {
  for (const proof::Subject& subject : proof::ConversionSubjects(GetParam())) {
    EXPECT_EQ(proof::CheckShapes(subject), std::nullopt);
  }
}

TEST_P(KernelsOfLevel, EqualThePlainLoopsForEveryValueInEveryPlace) {
  for (const proof::Subject& subject : proof::ConversionSubjects(GetParam())) {
    EXPECT_EQ(proof::CheckValues(subject), std::nullopt);
  }
}

// One block around each power of two above 2^-8; all floats take the sweep.
TEST_P(KernelsOfLevel, TruncateFloatsLikeThePlainLoop) {
  std::vector<proof::Subject> conversions = proof::ConversionSubjects(GetParam());
  std::erase_if(conversions, [](const auto& c) { return c.source.elementBytes != 4; });
  ASSERT_EQ(conversions.size(), 2U);
  for (std::uint32_t block = 0x3B80; block <= 0x4F80; block += 0x80) {
    const auto findings = proof::CheckFloats(conversions, {block, 1}, [](std::uint32_t) {});
    EXPECT_THAT(findings, ::testing::Each(std::nullopt));
  }
}

// Stores past the caches need multiples of a vector, which such a row never
// reaches.
TEST_P(KernelsOfLevel, StreamToRowsBetweenTheChannelsOfMemory) {
  if (GetParam() == simd::Level::Baseline) GTEST_SKIP() << "has no vectors";
  constexpr std::size_t kChannels = 333;
  std::vector<std::uint8_t> source(kChannels);
  for (std::size_t i = 0; i < kChannels; ++i) source[i] = static_cast<std::uint8_t>(i);
  std::vector<std::uint16_t> expected(kChannels);
  PXLp_ConvertRow8to16(source.data(), expected.data(), kChannels);

  std::vector<unsigned char> memory(1 + kChannels * 2);
  PXLp_GetKernels(GetParam()).from8to16.streaming(source.data(), memory.data() + 1, kChannels);
  EXPECT_EQ(std::memcmp(memory.data() + 1, expected.data(), kChannels * 2), 0);
}
