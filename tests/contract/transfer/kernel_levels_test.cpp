// The conversions of every level that this processor has, beside the plain loops.
#include "tests/contract/levels.h"
#include "tools/proof/shapes.h"
#include "tools/proof/values.h"
#include "transfer/kernels/Kernels.h"

using KernelsOfLevel = EachLevel;

INSTANTIATE_TEST_SUITE_P(Processor, KernelsOfLevel, ::testing::ValuesIn(simd::ALL_LEVELS),
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
