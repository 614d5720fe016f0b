// The pixels of conversions, compared with the arithmetic written out here.
#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/pictures/samples.h"

namespace {

constexpr int kRgba = 6;

// The channels of a picture in the order of its rows.
template <typename Channel>
std::vector<Channel> ChannelsOf(const pxl::Picture& picture) {
  std::vector<Channel> channels(picture.pixels.size() / sizeof(Channel));
  std::memcpy(channels.data(), picture.pixels.data(), picture.pixels.size());
  return channels;
}

// A picture in which every channel takes every value once, each in another
// order.
std::string PngOfAllValues(int bits) {
  PngRecipe recipe;
  recipe.width = bits == 16 ? 256 : 16;
  recipe.height = recipe.width;
  recipe.colourType = kRgba;
  recipe.bits = bits;
  recipe.sample = [=](auto x, auto y, int c) {
    return (y * recipe.width + x + static_cast<unsigned>(c) * 5) & ((1U << bits) - 1U);
  };
  return MakePng(recipe);
}

class ConvertedPixels : public testing::Test {
 protected:
  // Converts a file of these bytes and returns the result.
  pxl::Picture Converted(const std::string& bytes, const std::string& ending,
                         const std::vector<std::string>& options) {
    WriteBytes(folder_ / "in", bytes);
    std::vector<std::string> arguments = {"convert", In(), "-o", Out(ending)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    return ReadPictureFile(Out(ending));
  }

  std::string In() const { return (folder_ / "in").string(); }
  std::string Out(const std::string& ending) const { return (folder_ / ("out" + ending)).string(); }

  TemporaryFolder folder_;
};

// One row of pixels with this red; green 0.25, blue 2, alpha 1.
std::string ExrOfReds(const std::vector<float>& reds) {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {static_cast<int>(reds.size()) - 1, 0}};
  recipe.value = [&](int x, int, const std::string& channel) {
    return channel == "R" ? reds.at(static_cast<std::size_t>(x)) : channel == "G" ? 0.25F : 2.0F;
  };
  return MakeExr(recipe);
}

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

float FloatOf8(unsigned v) {
  return static_cast<float>(static_cast<double>(v) * 0.00392156862745098);
}

unsigned Truncated8(float v) {
  const float scaled = v * 255.0F;
  return scaled >= 255.0F ? 255 : scaled > 0.0F ? static_cast<unsigned>(scaled) : 0;
}

unsigned Rounded16(float v) {
  const float clamped = v > 1.0F ? 1.0F : v < 0.0F ? 0.0F : v;
  if (std::isnan(clamped)) return 0;
  return static_cast<unsigned>(std::floor(static_cast<double>(clamped * 32768.0F) + 0.5));
}

std::uint16_t ToFile(unsigned v) {
  return pxl::ToFile16(static_cast<std::uint16_t>(v));
}

}  // namespace

TEST_F(ConvertedPixels, From16To8BitsAreRoundedInEveryChannelForAllValues) {
  const std::string png = PngOfAllValues(16);
  const auto result = ChannelsOf<std::uint8_t>(Converted(png, ".png", {"--depth", "32"}));
  const auto source = ChannelsOf<std::uint16_t>(ReadPictureFile(In()));
  ASSERT_EQ(result.size(), std::size_t{4} * 65536);
  for (std::size_t i = 0; i < result.size(); ++i) {
    const unsigned world = (source[i] * 32768U + 32767U) / 65535U;
    ASSERT_EQ(result[i], ((world * 255U + 16384U) >> 15) & 0xFFU) << source[i];
  }
}

TEST_F(ConvertedPixels, From16BitsToFloatsAreExactForAllValues) {
  const std::string png = PngOfAllValues(16);
  const auto result = ChannelsOf<float>(Converted(png, ".exr", {"--depth", "128"}));
  const auto source = ChannelsOf<std::uint16_t>(ReadPictureFile(In()));
  ASSERT_EQ(result.size(), source.size());
  for (std::size_t i = 0; i < result.size(); ++i) {
    const unsigned world = (source[i] * 32768U + 32767U) / 65535U;
    ASSERT_EQ(result[i], static_cast<float>(world) / 32768.0F) << source[i];
  }
}

TEST_F(ConvertedPixels, From8BitsToFloatsAreExactBitForBit) {
  const std::string png = PngOfAllValues(8);
  const auto result = ChannelsOf<float>(Converted(png, ".exr", {"--depth", "128"}));
  const auto source = ChannelsOf<std::uint8_t>(ReadPictureFile(In()));
  ASSERT_EQ(result.size(), std::size_t{4} * 256);
  for (std::size_t i = 0; i < result.size(); ++i) {
    ASSERT_EQ(std::bit_cast<std::uint32_t>(result[i]),
              std::bit_cast<std::uint32_t>(FloatOf8(source[i])))
        << int{source[i]};
  }
}

TEST_F(ConvertedPixels, From8To16BitsAreTruncatedAndScaledToTheFile) {
  const std::string png = PngOfAllValues(8);
  const auto result = ChannelsOf<std::uint16_t>(Converted(png, ".png", {"--depth", "64"}));
  const auto source = ChannelsOf<std::uint8_t>(ReadPictureFile(In()));
  for (std::size_t i = 0; i < result.size(); ++i) {
    ASSERT_EQ(result[i], ToFile((source[i] * 32768U + 128U) / 255U)) << int{source[i]};
  }
}

TEST_F(ConvertedPixels, OfTheirOwnDepthAreNotTouched) {
  for (const int bits : {8, 16}) {
    const std::string png = PngOfAllValues(bits);
    const auto result = Converted(png, ".png", {"--depth", bits == 8 ? "32" : "64"});
    auto source = ReadPictureFile(In());
    if (bits == 16) {
      for (std::size_t i = 0; i < source.pixels.size(); i += 2) {
        // The only loss is that of 65536 values in 32769.
        pxl::ToWorld16(&source.pixels[i], 1);
        pxl::ToFile16(&source.pixels[i], &source.pixels[i], 1);
      }
    }
    EXPECT_EQ(result.pixels, source.pixels) << bits;
  }
}

TEST_F(ConvertedPixels, FromFloatsTo8BitsAreTruncatedByTheBlit) {
  const std::vector<float> reds = {0.5F,  0.0F, -0.0F,     1.0F,       0.999F, 1e30F,
                                   -3.0F, kNaN, kInfinity, -kInfinity, 0.25F,  1.0F / 255.0F};
  const auto result =
      ChannelsOf<std::uint8_t>(Converted(ExrOfReds(reds), ".png", {"--depth", "32"}));
  EXPECT_EQ(result[1], 127);
  for (std::size_t i = 0; i < reds.size(); ++i) {
    EXPECT_EQ(result[4 * i], 255) << "alpha";
    EXPECT_EQ(result[4 * i + 1], Truncated8(reds[i])) << reds[i];
    EXPECT_EQ(result[4 * i + 2], 63) << "green";
    EXPECT_EQ(result[4 * i + 3], 255) << "blue";
  }
}

TEST_F(ConvertedPixels, FromFloatsTo16BitsAreRoundedPixelByPixel) {
  std::vector<float> reds = {0.5F, -0.0F, 1.0F, 2.0F, -3.0F, kNaN, kInfinity, -kInfinity};
  for (int i = 0; i < 1000; ++i) reds.push_back(static_cast<float>(i) / 997.0F);
  const auto result =
      ChannelsOf<std::uint16_t>(Converted(ExrOfReds(reds), ".png", {"--depth", "64"}));
  for (std::size_t i = 0; i < reds.size(); ++i) {
    EXPECT_EQ(result[4 * i + 1], ToFile(Rounded16(reds[i]))) << reds[i];
    EXPECT_EQ(result[4 * i + 2], ToFile(8192)) << "green";
  }
}

TEST_F(ConvertedPixels, OfFloatWorldsGoToPngWith16Bits) {
  const std::vector<float> reds = {0.5F, 0.1F, 2.0F, kNaN, kInfinity, -1.0F};
  const auto picture = Converted(ExrOfReds(reds), ".png", {"--depth", "128"});
  ASSERT_EQ(picture.header.samples, pxl::SampleType::Integer16);
  const auto result = ChannelsOf<std::uint16_t>(picture);
  for (std::size_t i = 0; i < reds.size(); ++i) {
    EXPECT_EQ(result[4 * i + 1], ToFile(Rounded16(reds[i]))) << reds[i];
  }
}

TEST_F(ConvertedPixels, OfIntegerWorldsGoToOpenExrAsFloats) {
  const auto from8 = ChannelsOf<float>(Converted(PngOfAllValues(8), ".exr", {"--depth", "32"}));
  const auto source8 = ChannelsOf<std::uint8_t>(ReadPictureFile(In()));
  for (std::size_t i = 0; i < from8.size(); ++i) ASSERT_EQ(from8[i], FloatOf8(source8[i]));

  const auto from16 = ChannelsOf<float>(Converted(PngOfAllValues(16), ".exr", {"--depth", "64"}));
  const auto source16 = ChannelsOf<std::uint16_t>(ReadPictureFile(In()));
  for (std::size_t i = 0; i < from16.size(); ++i) {
    ASSERT_EQ(from16[i], static_cast<float>(pxl::ToWorld16(source16[i])) / 32768.0F);
  }
}

TEST_F(ConvertedPixels, GoThroughEveryDepthOnTheWay) {
  const auto result = ChannelsOf<std::uint8_t>(
      Converted(PngOfAllValues(8), ".png", {"--via", "128,64", "--depth", "32"}));
  const auto source = ChannelsOf<std::uint8_t>(ReadPictureFile(In()));
  for (std::size_t i = 0; i < result.size(); ++i) {
    const unsigned deep = Rounded16(FloatOf8(source[i]));
    ASSERT_EQ(result[i], (deep * 255U + 16384U) >> 15) << int{source[i]};
  }
}

TEST_F(ConvertedPixels, ThroughFloatsAreTruncatedOnTheWayBack) {
  const auto result = ChannelsOf<std::uint8_t>(
      Converted(PngOfAllValues(8), ".png", {"--via", "128", "--blit-only", "--depth", "32"}));
  const auto source = ChannelsOf<std::uint8_t>(ReadPictureFile(In()));
  for (std::size_t i = 0; i < result.size(); ++i) {
    ASSERT_EQ(result[i], Truncated8(FloatOf8(source[i])));
  }
}

TEST_F(ConvertedPixels, OutsideTheDataWindowAreTransparentBlack) {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {2, 0}};
  recipe.data = Imath::Box2i{{1, 0}, {1, 0}};
  recipe.value = [](int, int, const std::string&) { return 1.0F; };
  const auto result =
      ChannelsOf<std::uint8_t>(Converted(MakeExr(recipe), ".png", {"--depth", "32"}));
  EXPECT_THAT(result, testing::ElementsAre(0, 0, 0, 0, 255, 255, 255, 255, 0, 0, 0, 0));
}

// Worlds are filled with a pattern before pixels are written. If any of it reached
// a file, two patterns would result in two files.
TEST_F(ConvertedPixels, AreAllWrittenByTheModule) {
  for (const std::string& sample : SamplePictures()) {
    for (const std::string depth : {"32", "64", "128"}) {
      for (const std::string ending : {".png", ".exr"}) {
        std::vector<std::string> files;
        for (const std::string pattern : {"00000000", "7FC12345"}) {
          const std::vector<std::string> arguments = {"convert",   sample,    "-o",
                                                      Out(ending), "--depth", depth};
          ASSERT_EQ(RunPxl(arguments, {{"PXL_FILL", pattern}}).code, 0);
          files.push_back(ReadBytes(Out(ending)));
        }
        EXPECT_EQ(files[0], files[1]) << sample << " " << depth << ending;
      }
    }
  }
}

TEST_F(ConvertedPixels, AreTheSameWhetherHandlesMoveOrNot) {
  const std::vector<std::string> arguments = {
      "convert", SamplePicture("coffee.png"), "-o", Out(".png"), "--via", "128", "--depth", "64"};
  ASSERT_EQ(RunPxl(arguments).code, 0);
  const std::string moved = ReadBytes(Out(".png"));
  ASSERT_EQ(RunPxl(arguments, {{"PXL_SCRAMBLE", "0"}}).code, 0);
  EXPECT_EQ(ReadBytes(Out(".png")), moved);
}

TEST_F(ConvertedPixels, AreThereForPicturesOfOnePixelAndOfTheWidestRow) {
  for (const std::uint32_t width : {1U, 32765U}) {
    PngRecipe recipe;
    recipe.width = width;
    recipe.sample = [](auto x, auto, int c) { return (x + static_cast<unsigned>(c)) & 0xFFU; };
    const auto result = Converted(MakePng(recipe), ".png", {"--via", "128", "--depth", "64"});
    EXPECT_EQ(result.header.width, width);
    const auto channels = ChannelsOf<std::uint16_t>(result);
    const unsigned last = (width - 1 + 2) & 0xFFU;
    EXPECT_EQ(channels.back(), ToFile(Rounded16(FloatOf8(last))));
  }
}
