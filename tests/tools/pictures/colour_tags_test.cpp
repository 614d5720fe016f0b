// Chromaticities in PNG chunks, and lists of names.
#include "tools/pxl/pictures/colour_tags.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace pxl;

namespace {
constexpr Chromaticities kVideo = {0.3127, 0.329, 0.64, 0.33, 0.3, 0.6, 0.15, 0.06};
}

TEST(Chromaticities, BecomeBigEndianHundredThousandths) {
  const auto chunk = ChunkOfChromaticities(kVideo);
  ASSERT_TRUE(chunk);
  EXPECT_EQ(chunk->name, "cHRM");
  ASSERT_EQ(chunk->data.size(), 32U);
  // 31270 and 32900.
  const std::vector<std::uint8_t> white = {0, 0, 0x7A, 0x26, 0, 0, 0x80, 0x84};
  EXPECT_TRUE(std::equal(white.begin(), white.end(), chunk->data.begin()));
}

TEST(Chromaticities, ComeBackFromAChunk) {
  EXPECT_EQ(ChromaticitiesOfChunk(*ChunkOfChromaticities(kVideo)), kVideo);
}

TEST(Chromaticities, ThatAChunkCannotHoldGiveNone) {
  for (const double odd : {-0.1, 30000.0, double{NAN}, double{INFINITY}}) {
    Chromaticities values = kVideo;
    values[5] = odd;
    EXPECT_FALSE(ChunkOfChromaticities(values)) << odd;
  }
}

TEST(ColourTags, AreListedInWords) {
  EXPECT_EQ(JoinNames({}), "");
  EXPECT_EQ(JoinNames({"gAMA"}), "gAMA");
  EXPECT_EQ(JoinNames({"gAMA", "sRGB"}), "gAMA and sRGB");
  EXPECT_EQ(JoinNames({"gAMA", "sRGB", "iCCP"}), "gAMA, sRGB and iCCP");
}
