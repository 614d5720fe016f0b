// PNG files of every kind, damaged ones, and their colour tags.
#include "tools/pxl/formats/png/png_file.h"

#include <gmock/gmock.h>

#include <cstring>
#include <random>
#include <sstream>

#include "tests/tools/support/png_maker.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"

using namespace pxl;

namespace {

constexpr int kGrey = 0;
constexpr int kRgb = 2;
constexpr int kPalette = 3;
constexpr int kGreyAlpha = 4;
constexpr int kRgba = 6;

using Argb = std::array<unsigned, 4>;

Picture Decode(const std::string& file) {
  std::istringstream stream(file);
  return ReadPicture(*OpenPng(stream));
}

PictureHeader HeaderOf(const std::string& file) {
  std::istringstream stream(file);
  return OpenPng(stream)->header();
}

Argb PixelAt(const Picture& picture, std::int64_t x, std::int64_t y) {
  const std::size_t bytes = PixelBytes(picture.header.samples) / 4;
  Argb pixel{};
  for (std::size_t c = 0; c < 4; ++c) {
    // Little-endian, as the machine is.
    std::memcpy(&pixel[c], picture.Row(y) + (static_cast<std::size_t>(x) * 4 + c) * bytes, bytes);
  }
  return pixel;
}

unsigned Noise(std::uint32_t x, std::uint32_t y, int c, int bits) {
  const std::uint32_t mixed = (x * 2654435761U) ^ (y * 40503U) ^ (static_cast<unsigned>(c) * 977U);
  return (mixed >> 7) & ((1U << bits) - 1U);
}

PngRecipe Recipe(int colourType, int bits) {
  PngRecipe recipe;
  recipe.width = 19;
  recipe.height = 11;
  recipe.colourType = colourType;
  recipe.bits = bits;
  recipe.sample = [bits](auto x, auto y, int c) { return Noise(x, y, c, bits); };
  for (unsigned i = 0; colourType == kPalette && i < 1U << bits; ++i) {
    recipe.palette.push_back({static_cast<std::uint8_t>(i * 7), static_cast<std::uint8_t>(255 - i),
                              static_cast<std::uint8_t>(i ^ 0x55)});
  }
  return recipe;
}

// The pixel according to the format, with 8 or 16 bits a channel.
Argb Expected(const PngRecipe& recipe, std::uint32_t x, std::uint32_t y) {
  const unsigned opaque = recipe.bits == 16 ? 65535 : 255;
  const auto sample = [&](int c) { return recipe.sample(x, y, c); };
  const unsigned scale = recipe.bits < 8 ? 255U / ((1U << recipe.bits) - 1U) : 1U;
  switch (recipe.colourType) {
    case kGrey:
      return {opaque, sample(0) * scale, sample(0) * scale, sample(0) * scale};
    case kRgb:
      return {opaque, sample(0), sample(1), sample(2)};
    case kPalette: {
      const auto& colour = recipe.palette.at(sample(0));
      return {255, colour[0], colour[1], colour[2]};
    }
    case kGreyAlpha:
      return {sample(1), sample(0), sample(0), sample(0)};
    default:
      return {sample(3), sample(0), sample(1), sample(2)};
  }
}

void ExpectDecoded(const PngRecipe& recipe) {
  const Picture picture = Decode(MakePng(recipe));
  ASSERT_EQ(picture.header.width, recipe.width);
  ASSERT_EQ(picture.header.height, recipe.height);
  ASSERT_EQ(picture.header.samples,
            recipe.bits == 16 ? SampleType::Integer16 : SampleType::Integer8);
  for (std::uint32_t y = 0; y < recipe.height; ++y) {
    for (std::uint32_t x = 0; x < recipe.width; ++x) {
      ASSERT_EQ(PixelAt(picture, x, y), Expected(recipe, x, y)) << x << ", " << y;
    }
  }
}

struct Kind {
  int colourType;
  int bits;
};

class EveryKindOfPng : public testing::TestWithParam<Kind> {};

Picture RandomPicture(SampleType samples) {
  Picture picture = NewPicture(23, 9, samples);
  std::mt19937 random(1);
  for (std::byte& byte : picture.pixels) byte = static_cast<std::byte>(random());
  return picture;
}

std::string Encode(const Picture& picture) {
  std::ostringstream stream;
  WritePng(stream, picture.header, [&](std::int64_t y) { return picture.Row(y); });
  return stream.str();
}

std::vector<std::uint8_t> Bytes(const std::string& text) {
  return {text.begin(), text.end()};
}

const std::vector<PngChunk>& ColourChunks() {
  static const std::vector<PngChunk> chunks = {
      {"gAMA", Bytes(BigEndian(45455))},
      {"cHRM", Bytes(BigEndian(31270) + BigEndian(32900) + BigEndian(64000) + BigEndian(33000) +
                     BigEndian(30000) + BigEndian(60000) + BigEndian(15000) + BigEndian(6000))},
      {"iCCP", Bytes(std::string("profile\0\0", 9) + "compressed bytes")}};
  return chunks;
}

std::vector<std::string> NamesOf(const std::vector<PngChunk>& chunks) {
  std::vector<std::string> names;
  names.reserve(chunks.size());
  for (const PngChunk& chunk : chunks) names.push_back(chunk.name);
  return names;
}

}  // namespace

TEST_P(EveryKindOfPng, IsDecodedToArgb) {
  ExpectDecoded(Recipe(GetParam().colourType, GetParam().bits));
}

TEST_P(EveryKindOfPng, IsDecodedWhenInterlaced) {
  PngRecipe recipe = Recipe(GetParam().colourType, GetParam().bits);
  recipe.interlaced = true;
  ExpectDecoded(recipe);
}

INSTANTIATE_TEST_SUITE_P(, EveryKindOfPng,
                         testing::Values(Kind{kGrey, 1}, Kind{kGrey, 2}, Kind{kGrey, 4},
                                         Kind{kGrey, 8}, Kind{kGrey, 16}, Kind{kRgb, 8},
                                         Kind{kRgb, 16}, Kind{kPalette, 1}, Kind{kPalette, 2},
                                         Kind{kPalette, 4}, Kind{kPalette, 8}, Kind{kGreyAlpha, 8},
                                         Kind{kGreyAlpha, 16}, Kind{kRgba, 8}, Kind{kRgba, 16}),
                         [](const auto& kind) {
                           return "Type" + std::to_string(kind.param.colourType) + "Bits" +
                                  std::to_string(kind.param.bits);
                         });

TEST(PngTransparency, OfAPaletteBecomesAlpha) {
  PngRecipe recipe = Recipe(kPalette, 2);
  recipe.width = 4;
  recipe.sample = [](auto x, auto, int) { return x; };
  recipe.transparency = std::string("\x00\x80", 2);
  const Picture picture = Decode(MakePng(recipe));
  EXPECT_EQ(PixelAt(picture, 0, 0)[0], 0U);
  EXPECT_EQ(PixelAt(picture, 1, 0)[0], 128U);
  EXPECT_EQ(PixelAt(picture, 2, 0)[0], 255U);
  EXPECT_EQ(PixelAt(picture, 1, 0)[1], 7U);
}

TEST(PngTransparency, OfOneGreyMakesOnlyThatTransparent) {
  for (const int bits : {2, 8, 16}) {
    PngRecipe recipe = Recipe(kGrey, bits);
    recipe.width = 4;
    recipe.sample = [](auto x, auto, int) { return x; };
    recipe.transparency = std::string("\x00\x02", 2);
    const Picture picture = Decode(MakePng(recipe));
    const unsigned opaque = bits == 16 ? 65535 : 255;
    EXPECT_EQ(PixelAt(picture, 2, 0)[0], 0U) << bits;
    EXPECT_EQ(PixelAt(picture, 1, 0)[0], opaque) << bits;
    EXPECT_EQ(PixelAt(picture, 3, 0)[0], opaque) << bits;
  }
}

TEST(PngTransparency, OfAColourComparesAllSixteenBits) {
  PngRecipe recipe = Recipe(kRgb, 16);
  recipe.width = 2;
  recipe.sample = [](auto x, auto, int c) { return 0x1200U + static_cast<unsigned>(c) + x; };
  recipe.transparency = std::string("\x12\x00\x12\x01\x12\x02", 6);
  const Picture picture = Decode(MakePng(recipe));
  EXPECT_EQ(PixelAt(picture, 0, 0), (Argb{0, 0x1200, 0x1201, 0x1202}));
  EXPECT_EQ(PixelAt(picture, 1, 0), (Argb{65535, 0x1201, 0x1202, 0x1203}));
}

TEST(PngFile, SurvivesWritingAndReadingAtBothDepths) {
  for (const SampleType samples : {SampleType::Integer8, SampleType::Integer16}) {
    const Picture picture = RandomPicture(samples);
    if (samples == SampleType::Integer16 && !CanWrite16BitPng()) {
      EXPECT_THROW(Encode(picture), Failure);
      continue;
    }
    const Picture back = Decode(Encode(picture));
    EXPECT_EQ(back.header.samples, samples);
    EXPECT_EQ(back.pixels, picture.pixels);
  }
}

TEST(PngFile, DescribesItsFormat) {
  EXPECT_EQ(HeaderOf(MakePng(Recipe(kPalette, 4))).format, "PNG, 4 bits a channel, palette");
  EXPECT_EQ(HeaderOf(MakePng(Recipe(kRgba, 16))).format, "PNG, 16 bits a channel, RGBA");
}

TEST(PngFile, ReportsItsChannels) {
  EXPECT_EQ(HeaderOf(MakePng(Recipe(kGrey, 1))).channels, (ChannelSet{true, false}));
  EXPECT_EQ(HeaderOf(MakePng(Recipe(kGreyAlpha, 8))).channels, (ChannelSet{true, true}));
  EXPECT_EQ(HeaderOf(MakePng(Recipe(kRgb, 16))).channels, (ChannelSet{false, false}));
  EXPECT_EQ(HeaderOf(MakePng(Recipe(kRgba, 8))).channels, (ChannelSet{false, true}));
  PngRecipe palette = Recipe(kPalette, 4);
  EXPECT_EQ(HeaderOf(MakePng(palette)).channels, (ChannelSet{false, false}));
  palette.transparency = "\x7F";
  EXPECT_EQ(HeaderOf(MakePng(palette)).channels, (ChannelSet{false, true}));
}

TEST(PngFile, CutOffAnywhereIsRefused) {
  PngRecipe recipe = Recipe(kRgb, 8);
  recipe.height = 4;
  for (const bool interlaced : {false, true}) {
    recipe.interlaced = interlaced;
    const std::string file = MakePng(recipe);
    for (std::size_t length = 0; length < file.size(); ++length) {
      EXPECT_THROW(Decode(file.substr(0, length)), Failure) << length;
    }
  }
}

TEST(PngFile, WithAnyByteDamagedIsReadOrRefused) {
  const std::string file = MakePng(Recipe(kRgba, 8));
  std::size_t refused = 0;
  for (std::size_t i = 0; i < file.size(); ++i) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(~damaged[i]);
    try {
      Decode(damaged);
    } catch (const Failure&) {
      ++refused;
    }
  }
  // Every critical byte is under a checksum.
  EXPECT_EQ(refused, file.size());
}

TEST(PngHeader, ReportsEverySizeWithoutMemoryForIt) {
  const PictureHeader header = HeaderOf(MakePngHeader(0x7FFFFFFF, 0x7FFFFFFF, 16, kRgba));
  EXPECT_EQ(header.width, 0x7FFFFFFF);
  EXPECT_EQ(header.height, 0x7FFFFFFF);
}

TEST(PngHeader, WithMorePixelsThanAllowedIsRefused) {
  const auto refuse = [](std::uint32_t width, std::uint32_t height, std::uint64_t most) {
    RefuseMorePixels(HeaderOf(MakePngHeader(width, height, 16, kRgba)), most);
  };
  EXPECT_NO_THROW(refuse(16384, 16384, kMostPixels));
  EXPECT_THROW(refuse(16384, 16385, kMostPixels), Failure);
  EXPECT_THROW(refuse(0x7FFFFFFF, 0x7FFFFFFF, kMostPixels), Failure);
  EXPECT_NO_THROW(refuse(19, 11, 209));
  EXPECT_THROW(refuse(19, 11, 208), Failure);
  EXPECT_THROW(refuse(1, 1, 0), Failure);
}

TEST(PngFile, ChangedAfterItsHeaderWasReadIsRefused) {
  std::stringstream stream(MakePng(Recipe(kRgb, 8)));
  const auto reader = OpenPng(stream);
  PngRecipe larger = Recipe(kRgb, 8);
  larger.width *= 40;
  larger.height *= 40;
  stream.str(MakePng(larger));
  EXPECT_THROW(ReadPicture(*reader), Failure);
}

TEST(PngHeader, WithoutPixelsIsRefused) {
  EXPECT_THROW(HeaderOf(MakePngHeader(0, 5, 8, kRgb)), Failure);
  EXPECT_THROW(HeaderOf(MakePngHeader(5, 0, 8, kRgb)), Failure);
  EXPECT_THROW(HeaderOf(MakePngHeader(0x80000000U, 5, 8, kRgb)), Failure);
}

TEST(PngHeader, OfAnUnknownKindIsRefused) {
  EXPECT_THROW(HeaderOf(MakePngHeader(5, 5, 3, kRgb)), Failure);
  EXPECT_THROW(HeaderOf(MakePngHeader(5, 5, 8, 5)), Failure);
}

TEST(PngColourChunks, AreKeptAsTheyStand) {
  PngRecipe recipe = Recipe(kRgb, 8);
  recipe.chunks = ColourChunks();
  Picture picture = Decode(MakePng(recipe));
  const Picture back = Decode(Encode(picture));
  ASSERT_EQ(NamesOf(back.header.colour.chunks), NamesOf(ColourChunks()));
  for (std::size_t i = 0; i < ColourChunks().size(); ++i) {
    EXPECT_EQ(back.header.colour.chunks[i].data, ColourChunks()[i].data);
  }
  EXPECT_EQ(back.pixels, picture.pixels);
}

TEST(PngColourChunks, OfAWrongLengthAreDropped) {
  PngRecipe recipe = Recipe(kRgb, 8);
  recipe.chunks = {{"gAMA", Bytes("abc")}, {"sRGB", Bytes("")}};
  EXPECT_TRUE(HeaderOf(MakePng(recipe)).colour.chunks.empty());
}

TEST(PngColourChunks, CountOnce) {
  PngRecipe recipe = Recipe(kRgb, 8);
  recipe.chunks = {{"gAMA", Bytes(BigEndian(1))}, {"gAMA", Bytes(BigEndian(2))}};
  const ColourTags colour = HeaderOf(MakePng(recipe)).colour;
  ASSERT_EQ(colour.chunks.size(), 1U);
  EXPECT_EQ(colour.chunks[0].data, Bytes(BigEndian(1)));
}

TEST(PngColourChunks, DoNotGiveAGreyProfileToAColouredFile) {
  PngRecipe recipe = Recipe(kGrey, 8);
  recipe.chunks = ColourChunks();
  const Picture picture = Decode(MakePng(recipe));
  EXPECT_EQ(ColourTagsLostInPng(picture.header.colour), "the grey iCCP profile");
  EXPECT_THAT(NamesOf(Decode(Encode(picture)).header.colour.chunks),
              testing::ElementsAre("gAMA", "cHRM"));
}

TEST(PngColourChunks, AreMadeOfChromaticities) {
  Picture picture = RandomPicture(SampleType::Integer8);
  picture.header.colour.chromaticities = {0.3127, 0.329, 0.64, 0.33, 0.3, 0.6, 0.15, 0.06};
  const ColourTags colour = Decode(Encode(picture)).header.colour;
  ASSERT_EQ(colour.chunks.size(), 1U);
  EXPECT_EQ(colour.chunks[0].data, ColourChunks()[1].data);
  EXPECT_EQ(ColourTagsLostInPng(picture.header.colour), "");
}

TEST(PngColourChunks, AreSaidToBeLostWhenTheyCannotBeMade) {
  ColourTags colour;
  colour.chromaticities = Chromaticities{-1.0, 0, 0, 0, 0, 0, 0, 0};
  EXPECT_EQ(ColourTagsLostInPng(colour), "the chromaticities");
}

TEST(PngWriting, ToAStreamThatTakesNoMoreFails) {
  const Picture picture = RandomPicture(SampleType::Integer8);
  std::ostringstream stream;
  stream.setstate(std::ios::badbit);
  EXPECT_THROW(WritePng(stream, picture.header, [&](std::int64_t y) { return picture.Row(y); }),
               Failure);
}
