// OpenEXR files of every accepted kind, and the refusal of others.
#include <gmock/gmock.h>
#include <half.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>

#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tools/pxl/formats/exr/exr_reader.h"
#include "tools/pxl/formats/exr/exr_writer.h"
#include "tools/pxl/pictures/colour_tags.h"
#include "tools/pxl/system/failure.h"

using namespace pxl;
using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

namespace {

using Argb = std::array<float, 4>;

Picture Decode(const std::string& file) {
  std::istringstream stream(file);
  return ReadPicture(*OpenExr(stream));
}

PictureHeader HeaderOf(const std::string& file) {
  std::istringstream stream(file);
  return OpenExr(stream)->header();
}

std::string ReasonAgainst(const std::string& file) {
  try {
    Decode(file);
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "";
}

Argb PixelAt(const Picture& picture, std::int64_t x, std::int64_t y) {
  Argb pixel{};
  std::memcpy(pixel.data(), picture.Row(y) + x * 16, 16);
  return pixel;
}

// Distinct values that a half holds exactly, some of them above 1.
float ValueAt(int x, int y, const std::string& channel) {
  return static_cast<float>(x) / 8.0F - static_cast<float>(y) / 4.0F +
         static_cast<float>(channel[0] - 'A') / 32.0F;
}

ExrRecipe Recipe() {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {12, 8}};
  recipe.value = ValueAt;
  return recipe;
}

Argb Expected(const ExrRecipe& recipe, int x, int y) {
  const auto value = [&](const std::string& channel) { return recipe.value(x, y, channel); };
  const bool alpha = recipe.channels.back() == "A";
  const bool grey = recipe.channels.front() == "Y";
  return {alpha ? value("A") : 1.0F, value(grey ? "Y" : "R"), value(grey ? "Y" : "G"),
          value(grey ? "Y" : "B")};
}

bool Covers(const Imath::Box2i& window, int x, int y) {
  return x >= window.min.x && x <= window.max.x && y >= window.min.y && y <= window.max.y;
}

void ExpectDecoded(const ExrRecipe& recipe) {
  const Picture picture = Decode(MakeExr(recipe));
  const Imath::Box2i& display = recipe.display;
  ASSERT_EQ(picture.header.width, display.max.x - display.min.x + 1);
  ASSERT_EQ(picture.header.height, display.max.y - display.min.y + 1);
  ASSERT_EQ(picture.header.samples, SampleType::Float);
  for (int y = display.min.y; y <= display.max.y; ++y) {
    for (int x = display.min.x; x <= display.max.x; ++x) {
      const bool covered = Covers(recipe.data.value_or(display), x, y);
      ASSERT_EQ(PixelAt(picture, x - display.min.x, y - display.min.y),
                covered ? Expected(recipe, x, y) : Argb{})
          << x << ", " << y;
    }
  }
}

std::string Encode(const Picture& picture) {
  std::stringstream stream;
  WriteExr(stream, picture.header, [&](std::int64_t y) { return picture.Row(y); });
  return stream.str();
}

// Returns false for any exception but a Failure.
bool IsReadOrRefused(const std::string& file) {
  try {
    const PictureHeader header = HeaderOf(file);
    // As in the program, pictures that are too large are not decoded.
    if (header.width < 1000 && header.height < 1000) Decode(file);
  } catch (const Failure&) {
    return true;
  } catch (...) {
    return false;
  }
  return true;
}

std::string SmallFile() {
  ExrRecipe recipe = Recipe();
  recipe.display = {{0, 0}, {4, 19}};  // two blocks of ZIP's 16 lines
  return MakeExr(recipe);
}

}  // namespace

TEST(ExrFile, IsReadWithEverySetOfChannelsAsHalfAndFloat) {
  for (const Imf::PixelType type : {Imf::HALF, Imf::FLOAT}) {
    for (const std::vector<std::string>& channels :
         {std::vector<std::string>{"R", "G", "B"}, {"R", "G", "B", "A"}, {"Y"}, {"Y", "A"}}) {
      ExrRecipe recipe = Recipe();
      recipe.type = type;
      recipe.channels = channels;
      ExpectDecoded(recipe);
    }
  }
}

TEST(ExrFile, IsReadInEveryCompression) {
  for (const Imf::Compression compression :
       {Imf::NO_COMPRESSION, Imf::RLE_COMPRESSION, Imf::ZIPS_COMPRESSION, Imf::PIZ_COMPRESSION}) {
    ExrRecipe recipe = Recipe();
    recipe.compression = compression;
    ExpectDecoded(recipe);
  }
}

TEST(ExrFile, IsReadWhenTiled) {
  ExrRecipe recipe = Recipe();
  recipe.tiled = true;
  ExpectDecoded(recipe);
}

TEST(ExrFile, IsReadAtItsFullSizeWhenItHasLevels) {
  ExrRecipe recipe = Recipe();
  recipe.display = {{0, 0}, {4, 2}};  // one tile, so that the levels agree
  recipe.mipmap = true;
  recipe.value = [](int, int, const std::string&) { return 0.5F; };
  ExpectDecoded(recipe);
}

TEST(ExrFile, ShowsTheDisplayWindowWhateverTheDataWindow) {
  const Imath::Box2i windows[] = {
      {{2, 3}, {7, 5}},      // within
      {{-4, -2}, {20, 15}},  // around
      {{-4, 4}, {5, 15}},    // overlapping
      {{30, 0}, {35, 8}},    // to the right
      {{0, -9}, {12, -1}},   // above
  };
  for (const Imath::Box2i& window : windows) {
    ExrRecipe recipe = Recipe();
    recipe.data = window;
    ExpectDecoded(recipe);
    recipe.tiled = true;
    ExpectDecoded(recipe);
  }
}

TEST(ExrFile, MayHaveItsOriginAnywhere) {
  ExrRecipe recipe = Recipe();
  recipe.display = {{-100000, 70000}, {-99990, 70006}};
  recipe.data = Imath::Box2i{{-99998, 69990}, {-99000, 70003}};
  ExpectDecoded(recipe);
}

TEST(ExrFile, DescribesItsFormat) {
  ExrRecipe recipe = Recipe();
  EXPECT_EQ(HeaderOf(MakeExr(recipe)).format, "OpenEXR, float, RGB");
  recipe.type = Imf::HALF;
  recipe.channels = {"Y", "A"};
  recipe.tiled = true;
  EXPECT_EQ(HeaderOf(MakeExr(recipe)).format, "OpenEXR, half, YA, tiled");
}

TEST(ExrFile, ReportsItsChannels) {
  ExrRecipe recipe = Recipe();
  recipe.channels = {"R", "G", "B"};
  EXPECT_EQ(HeaderOf(MakeExr(recipe)).channels, (ChannelSet{false, false}));
  recipe.channels = {"R", "G", "B", "A"};
  EXPECT_EQ(HeaderOf(MakeExr(recipe)).channels, (ChannelSet{false, true}));
  recipe.channels = {"Y"};
  EXPECT_EQ(HeaderOf(MakeExr(recipe)).channels, (ChannelSet{true, false}));
}

TEST(ExrFile, OfAnotherKindIsRefusedWithTheReason) {
  EXPECT_EQ(ReasonAgainst(MakeMultiPartExr()), "OpenEXR files of several parts are not supported");
  EXPECT_EQ(ReasonAgainst(MakeDeepExr()), "deep OpenEXR files are not supported");
  EXPECT_EQ(ReasonAgainst(MakeLuminanceChromaExr()),
            "luminance/chroma OpenEXR files are not supported");
}

TEST(ExrFile, WithUnfitChannelsIsRefusedWithTheReason) {
  const Imf::Channel fit(Imf::FLOAT);
  EXPECT_EQ(ReasonAgainst(MakeExrOfChannels({{"R", fit}, {"B", fit}})),
            "no channel G; R, G and B or Y are needed");
  EXPECT_EQ(ReasonAgainst(MakeExrOfChannels({{"Z", fit}})),
            "no channel R; R, G and B or Y are needed");
  EXPECT_EQ(ReasonAgainst(MakeExrOfChannels({{"Y", Imf::Channel(Imf::UINT)}})),
            "channel Y holds whole numbers; half or float is needed");
  EXPECT_EQ(ReasonAgainst(MakeExrOfChannels({{"Y", fit}, {"A", Imf::Channel(Imf::HALF, 2, 2)}})),
            "channel A is subsampled, which is not supported");
}

TEST(ExrFile, CutOffAnywhereIsRefused) {
  const std::string file = SmallFile();
  for (std::size_t length = 0; length < file.size(); ++length) {
    EXPECT_THROW(Decode(file.substr(0, length)), Failure) << length;
  }
}

TEST(ExrFile, WithAnyByteDamagedIsReadOrRefused) {
  const std::string file = SmallFile();
  for (std::size_t i = 0; i < file.size(); ++i) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(~damaged[i]);
    EXPECT_TRUE(IsReadOrRefused(damaged)) << i;
  }
}

TEST(ExrHeader, ReportsEverySizeWithoutMemoryForIt) {
  const Imath::Box2i huge{{0, 0}, {0x7FFFFFFE, 0x7FFFFFFE}};
  const PictureHeader header = HeaderOf(WithWindow(SmallFile(), "displayWindow", huge));
  EXPECT_EQ(header.width, 0x7FFFFFFF);
  EXPECT_EQ(header.height, 0x7FFFFFFF);
}

TEST(ExrHeader, WithAnEmptyWindowIsRefused) {
  const Imath::Box2i empty{{5, 5}, {4, 4}};
  EXPECT_THAT(ReasonAgainst(WithWindow(SmallFile(), "displayWindow", empty)),
              HasSubstr("empty display window"));
  EXPECT_THAT(ReasonAgainst(WithWindow(SmallFile(), "dataWindow", empty)),
              HasSubstr("empty data window"));
}

TEST(ExrHeader, WithoutSeveralAttributesIsRefusedInOneLine) {
  std::string file = SmallFile();
  for (const std::string name : {"channels", "compression", "lineOrder"}) {
    file.at(file.find(name)) = '?';
  }
  EXPECT_THAT(ReasonAgainst(file), AllOf(Not(IsEmpty()), Not(HasSubstr("\n"))));
}

TEST(ExrHeader, WithAHugeDataWindowIsRefused) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  EXPECT_THAT(ReasonAgainst(WithWindow(SmallFile(), "dataWindow", {{kLowest, 0}, {kHighest, 3}})),
              HasSubstr("4294967296 x 4 pixels is too large"));
  EXPECT_THAT(ReasonAgainst(WithWindow(SmallFile(), "dataWindow", {{0, 0}, {3, kHighest}})),
              HasSubstr("is too large"));
}

TEST(ExrHeader, WithMorePixelsThanAllowedIsRefused) {
  const auto reasonAgainst = [](const char* window, const Imath::Box2i& box, std::uint64_t most) {
    ExrRecipe recipe = Recipe();
    recipe.tiled = true;
    try {
      RefuseMorePixels(HeaderOf(WithWindow(MakeExr(recipe), window, box)), most);
    } catch (const Failure& failure) {
      return std::string(failure.what());
    }
    return std::string();
  };
  const std::string limit = " pixels, more than the 268435456 that --max-pixels allows";
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  const Imath::Box2i all{{kLowest, kLowest}, {kHighest, kHighest}};
  EXPECT_EQ(reasonAgainst("displayWindow", all, kMostPixels), "4294967296 x 4294967296" + limit);
  EXPECT_EQ(reasonAgainst("dataWindow", {{-65536, 7}, {65535, 131078}}, kMostPixels),
            "a data window of 131072 x 131072" + limit);
  EXPECT_EQ(reasonAgainst("dataWindow", {{0, 0}, {16383, 16383}}, kMostPixels), "");
  // 13 by 9 are shown.
  EXPECT_EQ(reasonAgainst("dataWindow", {{0, 0}, {9, 9}}, 117), "");
  EXPECT_NE(reasonAgainst("dataWindow", {{0, 0}, {9, 9}}, 116), "");
  EXPECT_NE(reasonAgainst("dataWindow", {{0, 0}, {117, 0}}, 117), "");
}

TEST(ExrFile, AtTheEndsOfTheCoordinatesIsReadOrRefused) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  const Imath::Box2i corners[] = {{{kLowest, kLowest}, {kLowest + 12, kLowest + 8}},
                                  {{kHighest - 12, kHighest - 8}, {kHighest, kHighest}},
                                  {{kLowest, kHighest - 8}, {kLowest + 12, kHighest}}};
  for (const Imath::Box2i& corner : corners) {
    for (const bool tiled : {false, true}) {
      ExrRecipe recipe = Recipe();
      recipe.tiled = tiled;
      const std::string shown = WithWindow(MakeExr(recipe), "displayWindow", corner);
      EXPECT_TRUE(IsReadOrRefused(shown));
      EXPECT_TRUE(IsReadOrRefused(WithWindow(shown, "dataWindow", corner)));
      EXPECT_TRUE(IsReadOrRefused(WithWindow(MakeExr(recipe), "dataWindow", corner)));
    }
  }
}

TEST(ExrFile, WithMoreTilesThanItHoldsIsRefused) {
  ExrRecipe recipe = Recipe();
  recipe.tiled = true;
  const std::string file = WithWindow(MakeExr(recipe), "dataWindow", {{0, 0}, {16383, 16383}});
  EXPECT_THAT(ReasonAgainst(file), HasSubstr("damaged OpenEXR: "));
  // Before a table of 2^28 tiles is allocated: one library checks the size itself, the
  // other is not called.
  EXPECT_THAT(ReasonAgainst(WithTiles(file, 1, 1)),
              testing::AnyOf("damaged OpenEXR: the file ends too early",
                             "damaged OpenEXR: more tiles than the file holds"));
}

TEST(ExrFile, IsReadWhateverItsCountOfBlocks) {
  const std::string file = MakeExr(Recipe());
  const Picture expected = Decode(file);
  for (const int count : {1, 1000, 0x7FFFFFFF, -1}) {
    EXPECT_EQ(Decode(WithChunkCount(file, count)).pixels, expected.pixels) << count;
  }
}

// A file that was read completely at first does not change.
TEST(ExrFile, ChangedAfterItsHeaderWasReadIsRefusedOrReadAsItWas) {
  const std::string file = MakeExr(Recipe());
  std::stringstream stream(file);
  const auto reader = OpenExr(stream);
  ExrRecipe larger = Recipe();
  larger.display = {{0, 0}, {1299, 899}};
  stream.str(MakeExr(larger));
  try {
    EXPECT_EQ(ReadPicture(*reader).pixels, Decode(file).pixels);
  } catch (const Failure& failure) {
    EXPECT_STREQ(failure.what(), "damaged OpenEXR: the file was changed while it was read");
  }
}

TEST(ExrWriting, KeepsEveryFloatBitForBit) {
  Picture picture = NewPicture(40, 33, SampleType::Float);
  std::mt19937 random(7);
  for (std::byte& byte : picture.pixels) byte = static_cast<std::byte>(random());
  const float special[] = {0.0F,
                           -0.0F,
                           std::numeric_limits<float>::quiet_NaN(),
                           std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity(),
                           std::numeric_limits<float>::denorm_min(),
                           std::numeric_limits<float>::max(),
                           1.5F};
  std::memcpy(picture.pixels.data(), special, sizeof special);
  EXPECT_EQ(Decode(Encode(picture)).pixels, picture.pixels);
}

TEST(ExrWriting, KeepsChromaticities) {
  ExrRecipe recipe = Recipe();
  recipe.chromaticities = Chromaticities{0.3127, 0.329, 0.64, 0.33, 0.3, 0.6, 0.15, 0.06};
  const Picture picture = Decode(MakeExr(recipe));
  ASSERT_TRUE(picture.header.colour.chromaticities);
  EXPECT_FLOAT_EQ(static_cast<float>(picture.header.colour.chromaticities->at(2)), 0.64F);
  EXPECT_EQ(Decode(Encode(picture)).header.colour.chromaticities,
            picture.header.colour.chromaticities);
}

TEST(ExrWriting, TakesChromaticitiesFromPngAndReportsLostTags) {
  Picture picture = NewPicture(1, 1, SampleType::Float);
  PngChunk chunk{"cHRM", {}};
  for (const unsigned value : {31270U, 32900U, 64000U, 33000U, 30000U, 60000U, 15000U, 6000U}) {
    for (const char byte : BigEndian(value)) chunk.data.push_back(static_cast<std::uint8_t>(byte));
  }
  picture.header.colour.chunks = {{"gAMA", {0, 0, 0, 1}}, chunk, {"sRGB", {0}}};
  const auto values = Decode(Encode(picture)).header.colour.chromaticities;
  ASSERT_TRUE(values);
  EXPECT_FLOAT_EQ(static_cast<float>(values->at(0)), 0.3127F);
  EXPECT_FLOAT_EQ(static_cast<float>(values->at(7)), 0.06F);
  EXPECT_EQ(ColourTagsLostInExr(picture.header.colour), "gAMA and sRGB");
}

TEST(ExrWriting, ToAStreamThatTakesNoMoreFails) {
  const Picture picture = NewPicture(4, 4, SampleType::Float);
  std::stringstream stream;
  stream.setstate(std::ios::badbit);
  EXPECT_THROW(WriteExr(stream, picture.header, [&](std::int64_t y) { return picture.Row(y); }),
               Failure);
}
