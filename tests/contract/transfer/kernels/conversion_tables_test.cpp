// The tables of the conversions from 8 bits.
#include "transfer/kernels/conversion_tables.h"

#include <bit>

#include "tests/support/module/contract.h"
#include "tests/support/oracle/channel_oracle.h"

using ::testing::Each;
using ::testing::IsEmpty;

namespace {

class ConversionTables : public Contract {};

std::uint32_t Bits(float value) {
  return std::bit_cast<std::uint32_t>(value);
}

}  // namespace

TEST_F(ConversionTables, HoldZerosBeforeTheFirstBirth) {
  EXPECT_THAT(PXLp_table8to16, Each(0));
  EXPECT_THAT(PXLp_table8toF, Each(0.0F));
}

TEST_F(ConversionTables, AreExact) {
  PXL_Birth(0);
  for (std::uint32_t i = 0; i <= 255; ++i) {
    EXPECT_EQ(PXLp_table8to16[i], oracle::From8To16(i)) << i;
    EXPECT_EQ(Bits(PXLp_table8toF[i]), oracle::ChannelFrom8(i)) << i;
  }
}

TEST_F(ConversionTables, EqualTheConversionsOfOnePixel) {
  PXL_Birth(0);
  for (std::size_t i = 0; i <= 255; ++i) {
    const auto c = static_cast<std::uint8_t>(i);
    const PXL_Pixel8 source = {{c, c, c, c}};
    PXL_Pixel16 sixteen{};
    PXL_PixelF real{};
    PXL_Pixel8to16(&source, &sixteen);
    PXL_Pixel8toF(&source, &real);
    EXPECT_EQ(PXLp_table8to16[i], sixteen.channel[0]) << i;
    EXPECT_EQ(Bits(PXLp_table8toF[i]), Bits(real.channel[0])) << i;
  }
}

TEST_F(ConversionTables, AreBuiltWithoutACall) {
  PXLp_BuildConversionTables();
  EXPECT_THAT(Log(), IsEmpty());
  EXPECT_EQ(PXLp_table8to16[255], 32768);
}

TEST_F(ConversionTables, SurviveTheModulesDeath) {
  PXL_Birth(0);
  const auto wide = PXLp_table8to16;
  const auto real = PXLp_table8toF;
  PXL_Death();
  EXPECT_EQ(PXLp_table8to16, wide);
  EXPECT_EQ(PXLp_table8toF, real);
}

TEST_F(ConversionTables, AreLeftAloneByABirthOfAModuleThatLives) {
  PXL_Birth(0);
  PXLp_table8to16.fill(7);
  PXLp_table8toF.fill(7.0F);
  PXL_Birth(0);
  EXPECT_THAT(PXLp_table8to16, Each(7));
  EXPECT_THAT(PXLp_table8toF, Each(7.0F));
}

TEST_F(ConversionTables, AreBuiltAnewByABirthAfterADeath) {
  PXL_Birth(0);
  const auto wide = PXLp_table8to16;
  const auto real = PXLp_table8toF;
  PXL_Death();
  PXLp_table8to16.fill(7);
  PXLp_table8toF.fill(7.0F);
  PXL_Birth(0);
  EXPECT_EQ(PXLp_table8to16, wide);
  EXPECT_EQ(PXLp_table8toF, real);
}
