// Conversions of single pixels.
#include <bit>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <type_traits>

#include "tests/support/module/contract.h"
#include "tests/support/oracle/channel_oracle.h"
#include "transfer/kernels/channel_formulas.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

static_assert(std::is_same_v<decltype(&PXL_ClipPixelF), std::int32_t (*)(PXL_PixelF*)>);
static_assert(
    std::is_same_v<decltype(&PXL_PixelFto16), std::int32_t (*)(const PXL_PixelF*, PXL_Pixel16*)>);
static_assert(
    std::is_same_v<decltype(&PXL_PixelFto8), std::int32_t (*)(const PXL_PixelF*, PXL_Pixel8*)>);
static_assert(
    std::is_same_v<decltype(&PXL_Pixel16toF), std::int32_t (*)(const PXL_Pixel16*, PXL_PixelF*)>);
static_assert(
    std::is_same_v<decltype(&PXL_Pixel8toF), std::int32_t (*)(const PXL_Pixel8*, PXL_PixelF*)>);
static_assert(
    std::is_same_v<decltype(&PXL_Pixel16to8), std::int32_t (*)(const PXL_Pixel16*, PXL_Pixel8*)>);
static_assert(
    std::is_same_v<decltype(&PXL_Pixel8to16), std::int32_t (*)(const PXL_Pixel8*, PXL_Pixel16*)>);

static_assert(sizeof(PXL_Pixel8) == 4 && sizeof(PXL_Pixel8::channel[0]) == 1);
static_assert(sizeof(PXL_Pixel16) == 8 && sizeof(PXL_Pixel16::channel[0]) == 2);
static_assert(sizeof(PXL_PixelF) == 16 && sizeof(PXL_PixelF::channel[0]) == 4);

constexpr float kNotANumber = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinite = std::numeric_limits<float>::infinity();

std::uint32_t Bits(float value) {
  return std::bit_cast<std::uint32_t>(value);
}

// Channels that differ, the one in question at the given place.
template <typename Pixel, typename Channel>
Pixel With(Channel channel, int place) {
  Pixel pixel{};
  for (int k = 0; k < 4; ++k) pixel.channel[k] = static_cast<Channel>(k % 2);
  pixel.channel[place] = channel;
  return pixel;
}

// The result of one channel, which has to be the same at each of the four
// places and to leave the other places alone.
template <typename Destination, typename Source, typename Channel>
auto Converted(std::int32_t (*convert)(const Source*, Destination*), Channel channel) {
  Source plain{};
  for (int k = 0; k < 4; ++k) plain.channel[k] = static_cast<Channel>(k % 2);
  Destination others{};
  convert(&plain, &others);
  Destination result{};
  for (int place = 0; place < 4; ++place) {
    const auto source = With<Source>(channel, place);
    Destination one{};
    EXPECT_EQ(convert(&source, &one), 0);
    for (int k = 0; k < 4; ++k) {
      EXPECT_TRUE(k == place || one.channel[k] == others.channel[k]);
    }
    result.channel[place] = one.channel[place];
  }
  for (const auto c : result.channel) EXPECT_EQ(c, result.channel[0]);
  return result.channel[0];
}

int To16(float c) {
  return Converted<PXL_Pixel16>(PXL_PixelFto16, c);
}

int To8(float c) {
  return Converted<PXL_Pixel8>(PXL_PixelFto8, c);
}

int To8(std::uint16_t c) {
  return Converted<PXL_Pixel8>(PXL_Pixel16to8, c);
}

int To16(std::uint8_t c) {
  return Converted<PXL_Pixel16>(PXL_Pixel8to16, c);
}

float ToF(std::uint16_t c) {
  return Converted<PXL_PixelF>(PXL_Pixel16toF, c);
}

float ToF(std::uint8_t c) {
  return Converted<PXL_PixelF>(PXL_Pixel8toF, c);
}

// Floats around every value that a conversion can turn at, and odd ones.
std::vector<float> InterestingFloats() {
  std::vector<float> floats = {0.0F,           -0.0F,  1.0F,    -1.0F,          kInfinite,
                               -kInfinite,     1e-45F, -1e-45F, 1.1754944e-38F, 3.4028235e38F,
                               -3.4028235e38F, 2.0F,   -0.3F,   kNotANumber,    -kNotANumber};
  for (const float fullScale : {255.0F, 32768.0F}) {
    for (float n = 0; n <= 2 * fullScale + 1; ++n) {
      float c = n / (2 * fullScale);
      for (int i = 0; i < 3; ++i) c = std::nextafterf(c, -1.0F);
      for (int i = 0; i < 7; ++i, c = std::nextafterf(c, 2.0F)) floats.push_back(c);
    }
  }
  return floats;
}

// Memory in which source and destination begin together.
class SharedMemory {
 public:
  template <typename Source, typename Destination>
  Destination Convert(std::int32_t (*convert)(const Source*, Destination*), const Source& source) {
    void* memory = memory_.get();
    auto* from = new (memory) Source(source);
    convert(from, reinterpret_cast<Destination*>(memory));
    Destination result{};
    std::memcpy(&result, memory, sizeof result);
    return result;
  }

 private:
  struct Freed {
    void operator()(void* memory) const { std::free(memory); }
  };
  std::unique_ptr<void, Freed> memory_{std::malloc(16)};
};

class PixelConversion : public Contract {
 protected:
  // Nothing of all this is reported, and none of it needs the module alive.
  void TearDown() override {
    EXPECT_EQ(recorder_.Count("Kp_ReportErrString"), 0);
    EXPECT_EQ(recorder_.Count("K_ReportFailedVerification"), 0);
    EXPECT_EQ(PXLp_G.bornMark, 0U);
  }
};

class ClippedPixel : public PixelConversion {};
class FloatTo16 : public PixelConversion {};
class FloatTo8 : public PixelConversion {};
class From16ToFloat : public PixelConversion {};
class From8ToFloat : public PixelConversion {};
class From16To8 : public PixelConversion {};
class From8To16 : public PixelConversion {};

}  // namespace

TEST_F(ClippedPixel, KeepsNaNAndNegativeZero) {
  PXL_PixelF pixel = {{kNotANumber, -0.0F, kInfinite, -kInfinite}};
  EXPECT_EQ(PXL_ClipPixelF(&pixel), PXL_Err_NONE);
  EXPECT_TRUE(std::isnan(pixel.channel[0]));
  EXPECT_EQ(Bits(pixel.channel[1]), 0x80000000U);
  EXPECT_EQ(Bits(pixel.channel[2]), Bits(1.0F));
  EXPECT_EQ(Bits(pixel.channel[3]), 0U);
}

TEST_F(ClippedPixel, ClampsEachChannelByItself) {
  PXL_PixelF pixel = {{2.0F, -0.3F, 0.25F, 1.0F}};
  EXPECT_EQ(PXL_ClipPixelF(&pixel), PXL_Err_NONE);
  EXPECT_THAT(pixel.channel, ElementsAre(1.0F, 0.0F, 0.25F, 1.0F));
}

TEST_F(ClippedPixel, HasTheExactBitsAtEveryInterestingFloat) {
  for (const float c : InterestingFloats()) {
    for (int k = 0; k < 4; ++k) {
      auto pixel = With<PXL_PixelF>(c, k);
      PXL_ClipPixelF(&pixel);
      EXPECT_EQ(Bits(pixel.channel[k]), oracle::Clipped(Bits(c))) << c;
    }
  }
}

TEST_F(FloatTo16, RoundsToFullScale32768) {
  EXPECT_EQ(To16(1.0F), 32768);
  EXPECT_EQ(To16(0.5F), 16384);
  EXPECT_EQ(To16(0.2F), 6554);
  EXPECT_EQ(To16(0.1F), 3277);
  EXPECT_EQ(To16(0.7F), 22938);
}

TEST_F(FloatTo16, RoundsHalvesUpward) {
  EXPECT_EQ(To16(1.52587890625e-05F), 1);
  EXPECT_EQ(To16(std::nextafterf(1.52587890625e-05F, 0.0F)), 0);
  EXPECT_EQ(To16(3 * 1.52587890625e-05F), 2);
}

TEST_F(FloatTo16, Clamps) {
  EXPECT_EQ(To16(2.0F), 32768);
  EXPECT_EQ(To16(kInfinite), 32768);
  EXPECT_EQ(To16(-0.3F), 0);
  EXPECT_EQ(To16(-kInfinite), 0);
  EXPECT_EQ(To16(-0.0F), 0);
  EXPECT_EQ(To16(kNotANumber), 0);
}

TEST_F(FloatTo16, ConvertsAPixelOfOddChannels) {
  const PXL_PixelF source = {{kNotANumber, -0.0F, kInfinite, -kInfinite}};
  PXL_Pixel16 destination = {{9, 9, 9, 9}};
  EXPECT_EQ(PXL_PixelFto16(&source, &destination), PXL_Err_NONE);
  EXPECT_THAT(destination.channel, ElementsAre(0, 0, 32768, 0));
}

TEST_F(FloatTo16, IsExactAtEveryInterestingFloat) {
  for (const float c : InterestingFloats()) {
    const PXL_PixelF source = {{c, c, c, c}};
    PXL_Pixel16 destination{};
    PXL_PixelFto16(&source, &destination);
    for (const auto channel : destination.channel) {
      ASSERT_EQ(channel, oracle::Fto16(Bits(c))) << c;
    }
  }
}

TEST_F(FloatTo16, LeavesTheSourceUnclamped) {
  const PXL_PixelF source = {{2.0F, -0.3F, -0.0F, kInfinite}};
  PXL_PixelF copy = source;
  PXL_Pixel16 destination{};
  PXL_PixelFto16(&copy, &destination);
  EXPECT_EQ(std::memcmp(&copy, &source, sizeof source), 0);
}

TEST_F(FloatTo8, RoundsToFullScale255) {
  EXPECT_EQ(To8(1.0F), 255);
  EXPECT_EQ(To8(0.5F), 128);
  EXPECT_EQ(To8(0.2F), 51);
  EXPECT_EQ(To8(0.1F), 26);
  EXPECT_EQ(To8(0.7F), 179);
  EXPECT_EQ(To8(0.00196F), 0);
}

TEST_F(FloatTo8, RoundsTheProductToFloatAndAddsTheHalfInDouble) {
  EXPECT_EQ(To8(0.503921568F), 129);
  EXPECT_EQ(To8(0.0019607842F), 0);
}

TEST_F(FloatTo8, Clamps) {
  EXPECT_EQ(To8(2.0F), 255);
  EXPECT_EQ(To8(kInfinite), 255);
  EXPECT_EQ(To8(-0.3F), 0);
  EXPECT_EQ(To8(-kInfinite), 0);
  EXPECT_EQ(To8(-0.0F), 0);
  EXPECT_EQ(To8(kNotANumber), 0);
}

TEST_F(FloatTo8, ConvertsAPixelOfOddChannels) {
  const PXL_PixelF source = {{kNotANumber, -0.0F, kInfinite, -kInfinite}};
  PXL_Pixel8 destination = {{9, 9, 9, 9}};
  EXPECT_EQ(PXL_PixelFto8(&source, &destination), PXL_Err_NONE);
  EXPECT_THAT(destination.channel, ElementsAre(0, 0, 255, 0));
}

TEST_F(FloatTo8, IsExactAtEveryInterestingFloat) {
  for (const float c : InterestingFloats()) {
    const PXL_PixelF source = {{c, c, c, c}};
    PXL_Pixel8 destination{};
    PXL_PixelFto8(&source, &destination);
    for (const auto channel : destination.channel) {
      ASSERT_EQ(channel, oracle::Fto8(Bits(c))) << c;
    }
  }
}

TEST_F(FloatTo8, LeavesTheSourceUnclamped) {
  const PXL_PixelF source = {{2.0F, -0.3F, -0.0F, kInfinite}};
  PXL_PixelF copy = source;
  PXL_Pixel8 destination{};
  PXL_PixelFto8(&copy, &destination);
  EXPECT_EQ(std::memcmp(&copy, &source, sizeof source), 0);
}

TEST_F(From16ToFloat, DividesBy32768AndClampsNothing) {
  EXPECT_EQ(ToF(std::uint16_t{0}), 0.0F);
  EXPECT_EQ(ToF(std::uint16_t{1}), 3.0517578125e-05F);
  EXPECT_EQ(ToF(std::uint16_t{16384}), 0.5F);
  EXPECT_EQ(ToF(std::uint16_t{32768}), 1.0F);
  EXPECT_EQ(ToF(std::uint16_t{65535}), 1.999969482421875F);
}

TEST_F(From16ToFloat, IsExactForEveryValue) {
  for (std::uint32_t v = 0; v <= 65535; ++v) {
    const auto channel = static_cast<std::uint16_t>(v);
    const PXL_Pixel16 source = {{channel, 1, channel, 2}};
    PXL_PixelF destination{};
    ASSERT_EQ(PXL_Pixel16toF(&source, &destination), PXL_Err_NONE);
    ASSERT_EQ(Bits(destination.channel[0]), oracle::ChannelFrom16(v)) << v;
    ASSERT_EQ(Bits(destination.channel[2]), oracle::ChannelFrom16(v)) << v;
  }
}

TEST_F(From8ToFloat, DividesBy255InDouble) {
  EXPECT_EQ(Bits(ToF(std::uint8_t{0})), 0U);
  EXPECT_EQ(ToF(std::uint8_t{1}), 0.003921568859368563F);
  EXPECT_EQ(ToF(std::uint8_t{128}), 0.501960813999176F);
  EXPECT_EQ(ToF(std::uint8_t{254}), 0.9960784316062927F);
  EXPECT_EQ(ToF(std::uint8_t{255}), 1.0F);
}

TEST_F(From8ToFloat, IsExactForEveryValue) {
  ASSERT_EQ(std::bit_cast<std::uint64_t>(PXLp_RECIPROCAL_255), 0x3F70101010101010U);
  for (std::uint32_t c = 0; c <= 255; ++c) {
    EXPECT_EQ(Bits(ToF(static_cast<std::uint8_t>(c))), oracle::ChannelFrom8(c)) << c;
  }
}

TEST_F(From16To8, RoundsHalvesUpward) {
  EXPECT_EQ(To8(std::uint16_t{0}), 0);
  EXPECT_EQ(To8(std::uint16_t{64}), 0);
  EXPECT_EQ(To8(std::uint16_t{65}), 1);
  EXPECT_EQ(To8(std::uint16_t{192}), 1);
  EXPECT_EQ(To8(std::uint16_t{193}), 2);
  EXPECT_EQ(To8(std::uint16_t{16384}), 128);
  EXPECT_EQ(To8(std::uint16_t{32767}), 255);
  EXPECT_EQ(To8(std::uint16_t{32768}), 255);
  EXPECT_EQ(To8(std::uint16_t{32769}), 255);
}

TEST_F(From16To8, WrapsAboveFullScale) {
  EXPECT_EQ(To8(std::uint16_t{32832}), 255);
  EXPECT_EQ(To8(std::uint16_t{32833}), 0);
  EXPECT_EQ(To8(std::uint16_t{32960}), 0);
  EXPECT_EQ(To8(std::uint16_t{32961}), 1);
  EXPECT_EQ(To8(std::uint16_t{33000}), 1);
  EXPECT_EQ(To8(std::uint16_t{65535}), 254);
}

TEST_F(From16To8, IsExactForEveryValue) {
  for (std::uint32_t v = 0; v <= 65535; ++v) {
    const auto channel = static_cast<std::uint16_t>(v);
    const PXL_Pixel16 source = {{1, channel, 2, channel}};
    PXL_Pixel8 destination{};
    ASSERT_EQ(PXL_Pixel16to8(&source, &destination), PXL_Err_NONE);
    ASSERT_EQ(destination.channel[1], oracle::From16To8(v)) << v;
    ASSERT_EQ(destination.channel[3], oracle::From16To8(v)) << v;
  }
}

TEST_F(From8To16, WidensToFullScale32768) {
  EXPECT_EQ(To16(std::uint8_t{0}), 0);
  EXPECT_EQ(To16(std::uint8_t{1}), 129);
  EXPECT_EQ(To16(std::uint8_t{2}), 257);
  EXPECT_EQ(To16(std::uint8_t{127}), 16320);
  EXPECT_EQ(To16(std::uint8_t{128}), 16448);
  EXPECT_EQ(To16(std::uint8_t{254}), 32640);
  EXPECT_EQ(To16(std::uint8_t{255}), 32768);
}

TEST_F(From8To16, IsExactForEveryValue) {
  for (std::uint32_t c = 0; c <= 255; ++c) {
    EXPECT_EQ(To16(static_cast<std::uint8_t>(c)), static_cast<int>(oracle::From8To16(c))) << c;
  }
}

TEST_F(From8To16, AndBackIsTheIdentity) {
  for (int c = 0; c <= 255; ++c) {
    EXPECT_EQ(To8(static_cast<std::uint16_t>(To16(static_cast<std::uint8_t>(c)))), c);
  }
}

TEST_F(PixelConversion, KeepsTheOrderOfTheChannels) {
  const PXL_Pixel8 eight = {{0, 1, 128, 255}};
  PXL_Pixel16 sixteen{};
  PXL_PixelF real{};
  PXL_Pixel8 back{};
  PXL_Pixel8to16(&eight, &sixteen);
  EXPECT_THAT(sixteen.channel, ElementsAre(0, 129, 16448, 32768));
  PXL_Pixel16toF(&sixteen, &real);
  EXPECT_THAT(real.channel, ElementsAre(0.0F, 129.0F / 32768, 16448.0F / 32768, 1.0F));
  PXL_PixelFto16(&real, &sixteen);
  EXPECT_THAT(sixteen.channel, ElementsAre(0, 129, 16448, 32768));
  PXL_PixelFto8(&real, &back);
  EXPECT_THAT(back.channel, ElementsAre(0, 1, 128, 255));
  PXL_Pixel16to8(&sixteen, &back);
  EXPECT_THAT(back.channel, ElementsAre(0, 1, 128, 255));
  PXL_Pixel8toF(&eight, &real);
  EXPECT_EQ(real.channel[1], 0.003921568859368563F);
  EXPECT_EQ(real.channel[2], 0.501960813999176F);
}

TEST_F(PixelConversion, ReadsTheWholeSourceBeforeItWritesOverIt) {
  SharedMemory memory;
  const PXL_Pixel8 eight = {{1, 2, 127, 255}};
  const PXL_Pixel16 sixteen = {{129, 257, 16320, 32768}};
  const PXL_PixelF real = {{0.1F, 0.2F, 0.5F, 1.0F}};
  EXPECT_THAT(memory.Convert(PXL_Pixel8to16, eight).channel, ElementsAre(129, 257, 16320, 32768));
  EXPECT_THAT(memory.Convert(PXL_Pixel16to8, sixteen).channel, ElementsAre(1, 2, 127, 255));
  EXPECT_THAT(memory.Convert(PXL_PixelFto16, real).channel, ElementsAre(3277, 6554, 16384, 32768));
  EXPECT_THAT(memory.Convert(PXL_PixelFto8, real).channel, ElementsAre(26, 51, 128, 255));
  EXPECT_THAT(memory.Convert(PXL_Pixel16toF, sixteen).channel,
              ElementsAre(129.0F / 32768, 257.0F / 32768, 16320.0F / 32768, 1.0F));
  EXPECT_THAT(
      memory.Convert(PXL_Pixel8toF, eight).channel,
      ElementsAre(0.003921568859368563F, 0.007843137718737125F, 0.49803921580314636F, 1.0F));
}

TEST_F(PixelConversion, CallsNothing) {
  PXL_PixelF real = {{0.1F, 0.2F, 0.5F, 1.0F}};
  PXL_Pixel8 eight{};
  PXL_Pixel16 sixteen{};
  PXL_ClipPixelF(&real);
  PXL_PixelFto8(&real, &eight);
  PXL_PixelFto16(&real, &sixteen);
  PXL_Pixel8toF(&eight, &real);
  PXL_Pixel8to16(&eight, &sixteen);
  PXL_Pixel16toF(&sixteen, &real);
  PXL_Pixel16to8(&sixteen, &eight);
  EXPECT_THAT(Log(), IsEmpty());
}

TEST_F(PixelConversion, WorksAfterTheModulesDeath) {
  PXL_Birth(0);
  PXL_Death();
  EXPECT_EQ(To16(std::uint8_t{128}), 16448);
  EXPECT_EQ(ToF(std::uint8_t{255}), 1.0F);
  EXPECT_EQ(To8(0.5F), 128);
}
