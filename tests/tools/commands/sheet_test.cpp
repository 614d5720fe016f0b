// The sheet of depths, against the arithmetic written out here.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>

#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/sheet_pictures.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/pictures/magnifier.h"
#include "tools/pxl/pictures/resize.h"
#include "tools/pxl/pictures/samples.h"
#include "tools/pxl/sheets/contact_sheet.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

// Columns of the sheet.
enum { kAsRead, k32, k64, k128, kNearest, kDithered };

// A picture as four floats a pixel.
struct Floats {
  int width;
  std::vector<float> channels;
};

// Rows of 16-bit pixels, alpha full.
PngRecipe Gradient(unsigned width, unsigned height) {
  PngRecipe recipe;
  recipe.width = width;
  recipe.height = height;
  recipe.bits = 16;
  recipe.sample = [=](auto x, auto y, int c) {
    return c == 0   ? x * 65535 / width
           : c == 1 ? y * 65535 / height
                    : (x * 7919 + y * 104729) % 65536;
  };
  return recipe;
}

// The picture in a World of 64 bits.
std::vector<std::uint16_t> WorldChannels(const pxl::Picture& picture) {
  std::vector<std::uint16_t> channels(picture.pixels.size() / 2);
  std::memcpy(channels.data(), picture.pixels.data(), picture.pixels.size());
  for (std::uint16_t& channel : channels) channel = pxl::ToWorld16(channel);
  return channels;
}

Floats AsFloats(const pxl::Picture& picture16) {
  Floats floats{static_cast<int>(picture16.header.width), {}};
  for (const std::uint16_t channel : WorldChannels(picture16)) {
    floats.channels.push_back(static_cast<float>(channel) / 32768.0F);
  }
  return floats;
}

// 64 bits to 32.
pxl::Picture AsBytes(const pxl::Picture& picture16) {
  const std::vector<std::uint16_t> channels = WorldChannels(picture16);
  const auto width = static_cast<int>(picture16.header.width);
  return PictureBy(width, static_cast<int>(picture16.header.height), [&](int x, int y) {
    Pixel8 pixel{};
    for (std::size_t k = 0; k < 4; ++k) {
      const unsigned value = channels[static_cast<std::size_t>(4 * (y * width + x)) + k];
      pixel[k] = static_cast<std::uint8_t>((value * 255U + 16384U) >> 15);
    }
    return pixel;
  });
}

double DifferenceOf(float before, std::uint8_t after) {
  const auto value = static_cast<float>(static_cast<double>(after) * 0.00392156862745098);
  return std::fabs(double{before} - double{value});
}

// The differences of colours, magnified. Alpha is taken to be the same.
pxl::Picture Differences(const Floats& before, const pxl::Picture& after) {
  double largest = 0.0;
  for (std::size_t i = 0; i < before.channels.size(); ++i) {
    if (i % 4 == 0) continue;
    largest = std::max(
        largest, DifferenceOf(before.channels[i], std::to_integer<std::uint8_t>(after.pixels[i])));
  }
  const double factor = pxl::MagnifierFor(largest);
  return PictureBy(before.width, static_cast<int>(after.header.height), [&](int x, int y) {
    const Pixel8 now = PixelOf(after, x, y);
    Pixel8 pixel = {255};
    for (std::size_t k = 1; k < 4; ++k) {
      const std::size_t i = static_cast<std::size_t>(4 * (y * before.width + x)) + k;
      const double shown = DifferenceOf(before.channels[i], now[k]) * factor;
      pixel[k] = static_cast<std::uint8_t>(std::lround(std::min(shown, 1.0) * 255.0));
    }
    return pixel;
  });
}

pxl::Picture Black(const pxl::Picture& size) {
  const auto black = [](int, int) { return Pixel8{255, 0, 0, 0}; };
  return PictureBy(static_cast<int>(size.header.width), static_cast<int>(size.header.height),
                   black);
}

class DepthsSheet : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  void Make(const std::string& bytes) {
    WriteBytes(folder_ / "in", bytes);
    const Outcome outcome = RunPxl({"sheet", Path("in"), "-o", Path("sheet.png")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "");
    sheet_ = ReadPictureFile(Path("sheet.png"));
  }

  // The top of the cell in that column with the picture, in the size of pictures on
  // sheets.
  std::optional<int> TopOf(const pxl::Picture& picture, int column) const {
    const pxl::Picture cell = pxl::Fitted(picture, pxl::kThumbnailSide);
    const int width = std::max(static_cast<int>(cell.header.width), pxl::kThumbnailText);
    return FindBelow(sheet_, cell, ColumnLeft(column, width), 0);
  }

  void ExpectFailure(const std::vector<std::string>& arguments, int code, const std::string& line) {
    ExpectNoSheet(folder_, arguments, code, line);
  }

  TemporaryFolder folder_;
  pxl::Picture sheet_;
};

}  // namespace

TEST_F(DepthsSheet, ShowsEachDepthOverItsDifference) {
  Make(MakePng(Gradient(48, 40)));
  const pxl::Picture source = ReadPictureFile(Path("in"));
  const pxl::Picture bytes = AsBytes(source);
  const auto top = TopOf(bytes, kAsRead);
  ASSERT_TRUE(top.has_value());
  for (const int column : {k32, k64, k128}) EXPECT_EQ(TopOf(bytes, column), top) << column;

  const auto changeTop = TopOf(Differences(AsFloats(source), bytes), k32);
  ASSERT_TRUE(changeTop.has_value());
  EXPECT_GT(*changeTop, *top + 200);
  for (const int column : {k64, k128}) EXPECT_EQ(TopOf(Black(bytes), column), changeTop) << column;
}

TEST_F(DepthsSheet, ShowsTheNearestAndTheDitheredOf256Colours) {
  Make(MakePng(Gradient(48, 40)));
  const pxl::Picture source = ReadPictureFile(Path("in"));
  const pxl::Picture bytes = AsBytes(source);
  const pxl::Picture nearest =
      PictureBy(48, 40, [&](int x, int y) { return NearestStandardColour(PixelOf(bytes, x, y)); });
  const auto top = TopOf(bytes, kAsRead);
  ASSERT_TRUE(top.has_value());
  EXPECT_EQ(TopOf(nearest, kNearest), top);

  const pxl::Picture shown = PartOf(sheet_, ColumnLeft(kDithered, 240), *top, 240, 200);
  const pxl::Picture dithered =
      PictureBy(48, 40, [&](int x, int y) { return PixelOf(shown, 5 * x, 5 * y); });
  EXPECT_EQ(pxl::Enlarged(dithered, 5).pixels, shown.pixels);
  EXPECT_NE(dithered.pixels, nearest.pixels);
  for (int i = 0; i < 48 * 40; ++i) {
    ASSERT_TRUE(IsStandardColour(PixelOf(dithered, i % 48, i / 48))) << i;
  }

  const auto changeTop = TopOf(Differences(AsFloats(source), nearest), kNearest);
  ASSERT_TRUE(changeTop.has_value());
  EXPECT_EQ(TopOf(Differences(AsFloats(source), dithered), kDithered), changeTop);
}

TEST_F(DepthsSheet, ComparesColoursOnlyWhereThereIsNoAlpha) {
  PngRecipe recipe;
  recipe.width = 40;
  recipe.height = 24;
  recipe.colourType = 6;
  recipe.sample = [](auto x, auto y, int c) { return c == 3 ? x * 6 : c == 0 ? y * 10 : 51U; };
  Make(MakePng(recipe));
  const pxl::Picture source = ReadPictureFile(Path("in"));
  Floats floats{40, {}};
  for (const std::byte channel : source.pixels) {
    floats.channels.push_back(static_cast<float>(std::to_integer<int>(channel) / 255.0));
  }
  const pxl::Picture nearest =
      PictureBy(40, 24, [&](int x, int y) { return NearestStandardColour(PixelOf(source, x, y)); });
  EXPECT_TRUE(TopOf(nearest, kNearest).has_value());
  EXPECT_TRUE(TopOf(Differences(floats, nearest), kNearest).has_value());
}

TEST_F(DepthsSheet, ShowsDifferencesOfAlphaInGrey) {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {39, 23}};
  recipe.channels = {"R", "G", "B", "A"};
  recipe.value = [](int x, int y, const std::string& channel) {
    return channel == "A" && x >= 20 ? 1.5F : channel == "R" && y >= 12 ? 2.0F : 1.0F;
  };
  Make(MakeExr(recipe));
  // Half an alpha, a whole red; times 1.
  const pxl::Picture expected = PictureBy(40, 24, [](int x, int y) -> Pixel8 {
    const std::uint8_t grey = x >= 20 ? 128 : 0;
    return {255, y >= 12 ? std::uint8_t{255} : grey, grey, grey};
  });
  const auto top = TopOf(expected, k32);
  EXPECT_TRUE(top.has_value());
  EXPECT_EQ(TopOf(expected, k64), top);
  EXPECT_EQ(TopOf(Black(expected), k128), top);
}

TEST_F(DepthsSheet, ShowsWhatIsNoNumberAsWell) {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {39, 23}};
  recipe.value = [](int x, int, const std::string& channel) {
    if (channel != "R") return 1.0F;
    return x < 10 ? std::nanf("") : x < 20 ? std::numeric_limits<float>::infinity() : 0.0F;
  };
  Make(MakeExr(recipe));
  const pxl::Picture expected = PictureBy(40, 24, [](int x, int) -> Pixel8 {
    return {255, x >= 10 && x < 20 ? std::uint8_t{255} : std::uint8_t{0}, 0, 0};
  });
  EXPECT_TRUE(TopOf(expected, k32).has_value());
}

TEST_F(DepthsSheet, ReducesLargePicturesInTheirOwnDepth) {
  for (const unsigned width : {500U, 5000U}) {
    Make(MakePng(Gradient(width, 100)));
    const pxl::Picture source = pxl::Reduced(ReadPictureFile(Path("in")), width == 500 ? 3 : 21);
    const pxl::Picture bytes = AsBytes(source);
    EXPECT_TRUE(TopOf(bytes, kAsRead).has_value()) << width;
    EXPECT_TRUE(TopOf(Differences(AsFloats(source), bytes), k32).has_value()) << width;
  }
}

TEST_F(DepthsSheet, LooksAsItDid) {
  Make(MakePng(Gradient(48, 32)));
  ExpectGolden(Path("sheet.png"), "sheet.png");
}

TEST_F(DepthsSheet, NamesThePictureThatIsNone) {
  ExpectFailure({"sheet", Path("no.png"), "-o", Path("sheet.png")}, 1,
                Path("no.png") + ": No such file or directory");
  WriteBytes(folder_ / "wide.png", MakePngHeader(32767, 4, 8, 2));
  ExpectFailure({"sheet", Path("wide.png"), "-o", Path("sheet.png")}, 1,
                Path("wide.png") + ": row size too large");
  WriteBytes(folder_ / "cut.exr", ReadBytes(SamplePicture("cat-float.exr")).substr(0, 5000));
  ExpectFailure({"sheet", Path("cut.exr"), "-o", Path("sheet.png")}, 1,
                Path("cut.exr") + ": damaged OpenEXR");
  EXPECT_THAT(folder_.Names(), ElementsAre("cut.exr", "wide.png"));
}

TEST_F(DepthsSheet, NeedsAPlaceToGo) {
  const std::string in = SamplePicture("coffee.png");
  ExpectFailure({"sheet"}, 2, "IN: is required");
  ExpectFailure({"sheet", in}, 2, "--output: is required");
  ExpectFailure({"sheet", in, "-o", Path("sheet")}, 2, Path("sheet") + ": the ending must be .png");
  ExpectFailure({"sheet", in, "-o", Path("no/sheet.png")}, 1,
                Path("no/sheet.png") + ": no such folder");
  std::filesystem::copy_file(in, folder_ / "in.png");
  ExpectFailure({"sheet", Path("in.png"), "-o", Path("in.png")}, 2,
                Path("in.png") + ": is an input as well");
  EXPECT_EQ(ReadBytes(Path("in.png")), ReadBytes(in));
  EXPECT_THAT(folder_.Names(), ElementsAre("in.png"));
}

TEST_F(DepthsSheet, FailsInOneLineWithoutMemory) {
  const std::string in = SamplePicture("cat-float.exr");
  const Outcome outcome =
      RunPxl({"sheet", in, "-o", Path("sheet.png")}, {{"PXL_MEMORY_BUDGET", "30000"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + in + ": Unable to allocate")) << outcome.errors;
  EXPECT_THAT(folder_.Names(), IsEmpty());
}
