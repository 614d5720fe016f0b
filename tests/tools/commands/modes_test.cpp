// The sheet of transfer modes, against the modes' formulas written out here.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/sheet_pictures.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/pictures/resize.h"
#include "tools/pxl/sheets/contact_sheet.h"

using testing::ElementsAre;

namespace {

constexpr Pixel8 kWhite = {255, 255, 255, 255};
constexpr int kDither = 15;
constexpr int kDitherAgain = 16;
constexpr int kModes = 19;

// A channel of the result of the modes 0 to 14.
int ResultOf(int mode, int a, int b) {
  switch (mode) {
    case 0:
      return a;
    case 1:
      return a & b;
    case 2:
      return ~(a ^ b);
    case 3:
      return b | ~a;
    case 4:
      return ~a;
    case 5:
      return b & ~a;
    case 6:
      return a ^ b;
    case 7:
      return a | b;
    case 8:
      return (a * 32768 + b * 32767) / 65535;
    case 9:
      return std::min(a + b, 255);
    case 10:
      return a + b;
    case 11:
      return std::max(b - a, 0);
    case 12:
      return std::max(a, b);
    case 13:
      return b - a;
    default:
      return std::min(a, b);
  }
}

Pixel8 DrawnPixel(int mode, const Pixel8& a, const Pixel8& b) {
  constexpr Pixel8 kOrange = {255, 255, 128, 0};
  if (mode == 17) return a == kWhite ? b : a;
  if (mode == 18) return a == kWhite ? b : b == kWhite ? kOrange : b == kOrange ? kWhite : b;
  Pixel8 result = {255};
  for (std::size_t k = 1; k < 4; ++k) {
    result[k] = static_cast<std::uint8_t>(ResultOf(mode, a[k], b[k]) & 0xFF);
  }
  return result;
}

pxl::Picture Drawn(int mode, const pxl::Picture& a, const pxl::Picture& b) {
  return PictureBy(
      static_cast<int>(a.header.width), static_cast<int>(a.header.height),
      [&](int x, int y) { return DrawnPixel(mode, PixelOf(a, x, y), PixelOf(b, x, y)); });
}

// Any colours, with white and the highlight colour among them.
pxl::Picture Noise(int width, int height, unsigned seed) {
  std::mt19937 random(seed);
  const auto byte = [&] { return static_cast<std::uint8_t>(random()); };
  return PictureBy(width, height, [&](int, int) -> Pixel8 {
    const unsigned kind = random() % 8;
    if (kind == 0) return kWhite;
    if (kind == 1) return {255, 255, 128, 0};
    return {255, byte(), byte(), byte()};
  });
}

double MeanOf(const pxl::Picture& picture, std::size_t channel) {
  double sum = 0;
  double count = 0;
  for (std::size_t i = channel; i < picture.pixels.size(); i += 4, ++count) {
    sum += std::to_integer<int>(picture.pixels[i]);
  }
  return sum / count;
}

class ModesSheet : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // The sheet of two files.
  pxl::Picture SheetOf(const std::string& a, const std::string& b) {
    const Outcome outcome = RunPxl({"modes", a, b, "-o", Path("sheet.png")});
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    EXPECT_EQ(outcome.output, "");
    return ReadPictureFile(Path("sheet.png"));
  }

  pxl::Picture SheetOf(const pxl::Picture& a, const pxl::Picture& b) {
    SavePng(Path("a.png"), a);
    SavePng(Path("b.png"), b);
    return SheetOf(Path("a.png"), Path("b.png"));
  }

  // One line about the file, and no sheet.
  void ExpectFailure(const std::vector<std::string>& arguments, int code, const std::string& line) {
    ExpectNoSheet(folder_, arguments, code, line);
  }

  TemporaryFolder folder_;
};

// The rows of cells, each as its top edge, with the results of the modes for these
// two; cells of dithered pictures are not compared.
std::vector<int> FindModes(const pxl::Picture& sheet, const pxl::Picture& a,
                           const pxl::Picture& b) {
  std::vector<int> tops;
  const pxl::Picture source = pxl::Fitted(a, pxl::kThumbnailSide);
  int top = FindBelow(sheet, source, pxl::kSheetGutter, 0).value_or(0);
  for (int mode = 0; mode < kModes; ++mode) {
    if (mode == kDither || mode == kDitherAgain) continue;
    const pxl::Picture cell = pxl::Fitted(Drawn(mode, a, b), pxl::kThumbnailSide);
    const auto width = std::max<int>(static_cast<int>(cell.header.width), pxl::kThumbnailText);
    // The first of a row has the place of the others, as 17 has behind 16.
    const bool isNewRow = mode % 4 == 0 || mode == 17;
    const auto found =
        FindBelow(sheet, cell, ColumnLeft(mode % 4, width), isNewRow ? top + 1 : top);
    EXPECT_TRUE(found.has_value()) << "mode " << mode;
    if (!found.has_value()) return tops;
    if (isNewRow) {
      tops.push_back(*found);
      top = *found;
    }
    EXPECT_EQ(*found, top) << "mode " << mode;
  }
  return tops;
}

}  // namespace

TEST_F(ModesSheet, ShowsEveryModeInItsPlace) {
  const pxl::Picture a = Noise(48, 40, 1);
  const pxl::Picture b = Noise(48, 40, 2);
  const pxl::Picture sheet = SheetOf(a, b);
  EXPECT_EQ(sheet.header.width, 4 * 240 + 5 * pxl::kSheetGutter);
  const std::vector<int> tops = FindModes(sheet, a, b);
  ASSERT_EQ(tops.size(), 5U);
  const auto first = FindBelow(sheet, pxl::Enlarged(a, 5), ColumnLeft(0, 240), 0);
  ASSERT_TRUE(first.has_value());
  EXPECT_LT(*first, tops.front());
  EXPECT_EQ(FindBelow(sheet, pxl::Enlarged(b, 5), ColumnLeft(1, 240), 0), first);
}

TEST_F(ModesSheet, ShowsDitheringIn256Colours) {
  const pxl::Picture a = Noise(48, 40, 3);
  const pxl::Picture sheet = SheetOf(a, Noise(48, 40, 4));
  const std::vector<int> tops = FindModes(sheet, a, ReadPictureFile(Path("b.png")));
  ASSERT_EQ(tops.size(), 5U);
  const pxl::Picture cell = PartOf(sheet, ColumnLeft(3, 240), tops[3], 240, 200);
  const pxl::Picture again = PartOf(sheet, ColumnLeft(0, 240), tops[4], 240, 200);
  EXPECT_EQ(cell.pixels, again.pixels);
  for (int y = 2; y < 200; y += 5) {
    for (int x = 2; x < 240; x += 5) {
      ASSERT_TRUE(IsStandardColour(PixelOf(cell, x, y))) << x << ", " << y;
    }
  }
  for (std::size_t channel = 1; channel < 4; ++channel) {
    EXPECT_NEAR(MeanOf(cell, channel), MeanOf(a, channel), 3.0);
  }
}

TEST_F(ModesSheet, LaysTransparentPartsOnWhite) {
  const pxl::Picture a = PictureBy(24, 20, [](int x, int y) -> Pixel8 {
    return {static_cast<std::uint8_t>(x * 11), static_cast<std::uint8_t>(y * 12), 20, 200};
  });
  const pxl::Picture opaque = PictureBy(24, 20, [&](int x, int y) {
    Pixel8 pixel = PixelOf(a, x, y);
    for (std::size_t k = 1; k < 4; ++k) {
      const double value = (pixel[k] * pixel[0] + 255.0 * (255 - pixel[0])) / 255.0;
      pixel[k] = static_cast<std::uint8_t>(std::lround(value));
    }
    pixel[0] = 255;
    return pixel;
  });
  EXPECT_EQ(PixelOf(opaque, 0, 0), kWhite);
  EXPECT_EQ(FindModes(SheetOf(a, a), opaque, opaque).size(), 5U);
}

TEST_F(ModesSheet, ScalesTheMiddleOfASmallSourceToTheDestination) {
  const pxl::Picture a = Noise(30, 90, 5);
  const pxl::Picture b = Noise(60, 40, 6);
  const pxl::Picture scaled =
      PictureBy(60, 40, [&](int x, int y) { return PixelOf(a, x / 2, 35 + y / 2); });
  EXPECT_EQ(FindModes(SheetOf(a, b), scaled, b).size(), 5U);
}

TEST_F(ModesSheet, ReducesALargeSourceBeforeTheDrawingLayerScalesIt) {
  const pxl::Picture a = Noise(300, 180, 7);
  const pxl::Picture b = Noise(60, 40, 8);
  const pxl::Picture means = pxl::Reduced(PartOf(a, 15, 0, 270, 180), 4);
  const pxl::Picture scaled =
      PictureBy(60, 40, [&](int x, int y) { return PixelOf(means, x * 68 / 60, y * 45 / 40); });
  EXPECT_EQ(FindModes(SheetOf(a, b), scaled, b).size(), 5U);
}

TEST_F(ModesSheet, ReducesPicturesOfOneSizeAlike) {
  const pxl::Picture a = Noise(481, 302, 9);
  const pxl::Picture b = Noise(481, 302, 10);
  EXPECT_EQ(FindModes(SheetOf(a, b), pxl::Reduced(a, 3), pxl::Reduced(b, 3)).size(), 5U);
}

TEST_F(ModesSheet, ShowsPicturesThatNoSurfaceCouldHold) {
  const pxl::Picture wide = Noise(6000, 50, 11);
  const pxl::Picture high = Noise(3, 6000, 12);
  const pxl::Picture flat = Noise(6000, 3, 13);
  const int left = ColumnLeft(1, pxl::kThumbnailSide);
  EXPECT_TRUE(FindBelow(SheetOf(high, wide), pxl::Reduced(wide, 25), left, 0).has_value());
  EXPECT_TRUE(
      FindBelow(SheetOf(flat, high), pxl::Reduced(high, 25), ColumnLeft(1, pxl::kThumbnailText), 0)
          .has_value());
}

TEST_F(ModesSheet, TakesPicturesOfAllDepths) {
  for (const std::string name : {"raccoon-16.png", "cat-float.exr"}) {
    const std::string picture = SamplePicture(name);
    RunPxl({"convert", picture, "-o", Path("32.png"), "--depth", "32"});
    const pxl::Picture converted = ReadPictureFile(Path("32.png"));
    EXPECT_EQ(FindModes(SheetOf(picture, picture), converted, converted).size(), 5U) << name;
  }
}

TEST_F(ModesSheet, LooksAsItDid) {
  // Hues against shades, with white in both.
  SavePng(Path("hues.png"), PictureBy(24, 16, [](int x, int y) -> Pixel8 {
            const int hue = x * 10;
            const int level = y * 17;
            return {static_cast<std::uint8_t>(y < 3 ? x * 11 : 255), static_cast<std::uint8_t>(hue),
                    static_cast<std::uint8_t>(level),
                    static_cast<std::uint8_t>(255 - (hue + level) / 2)};
          }));
  SavePng(Path("shades.png"), PictureBy(48, 32, [](int x, int y) -> Pixel8 {
            if (x / 12 + y / 8 == 3) return kWhite;
            const auto shade = static_cast<std::uint8_t>((x / 12 + 4 * (y / 8)) * 17);
            return {255, shade, shade, static_cast<std::uint8_t>(x * 5)};
          }));
  SheetOf(Path("hues.png"), Path("shades.png"));
  ExpectGolden(Path("sheet.png"), "modes.png");
}

TEST_F(ModesSheet, WrapsLongNames) {
  const std::string name(120, 'n');
  const pxl::Picture picture = Noise(48, 40, 13);
  SavePng(Path(name + ".png"), picture);
  const pxl::Picture sheet = SheetOf(Path(name + ".png"), Path(name + ".png"));
  EXPECT_EQ(sheet.header.width, 4 * 240 + 5 * pxl::kSheetGutter);
}

TEST_F(ModesSheet, NamesThePictureThatIsNone) {
  const std::string good = SamplePicture("coffee.png");
  ExpectFailure({"modes", Path("no.png"), good, "-o", Path("sheet.png")}, 1,
                Path("no.png") + ": No such file or directory");
  ExpectFailure({"modes", good, Path("no.png"), "-o", Path("sheet.png")}, 1,
                Path("no.png") + ": No such file or directory");
  WriteBytes(folder_ / "big.png", MakePngHeader(30000, 30000, 8, 2));
  ExpectFailure(
      {"modes", good, Path("big.png"), "-o", Path("sheet.png"), "--max-pixels", "1000000000"}, 1,
      Path("big.png") + ": Image buffers of size 30000 x 30000");
  WriteBytes(folder_ / "cut.png", ReadBytes(good).substr(0, 5000));
  ExpectFailure({"modes", Path("cut.png"), good, "-o", Path("sheet.png")}, 1,
                Path("cut.png") + ": damaged PNG");
  EXPECT_THAT(folder_.Names(), ElementsAre("big.png", "cut.png"));
}

TEST_F(ModesSheet, NeedsAPlaceToGo) {
  const std::string a = SamplePicture("coffee.png");
  SavePng(Path("b.png"), Noise(4, 4, 14));
  const std::string bytes = ReadBytes(Path("b.png"));
  ExpectFailure({"modes", a}, 2, "B: is required");
  ExpectFailure({"modes", a, Path("b.png")}, 2, "--output: is required");
  ExpectFailure({"modes", a, a, a, "-o", Path("sheet.png")}, 2, a + ": is not expected");
  ExpectFailure({"modes", a, Path("b.png"), "-o", Path("sheet.exr")}, 2,
                Path("sheet.exr") + ": the ending must be .png");
  ExpectFailure({"modes", a, Path("b.png"), "-o", Path("b.png")}, 2,
                Path("b.png") + ": is an input as well");
  ExpectFailure({"modes", Path("b.png"), a, "-o", Path("b.png")}, 2,
                Path("b.png") + ": is an input as well");
  ExpectFailure({"modes", a, Path("b.png"), "-o", Path("no/sheet.png")}, 1,
                Path("no/sheet.png") + ": no such folder");
  EXPECT_EQ(ReadBytes(Path("b.png")), bytes);
  EXPECT_THAT(folder_.Names(), ElementsAre("b.png"));
}

TEST_F(ModesSheet, FailsInOneLineWithoutMemory) {
  // Too little for a picture, and enough for one surface but not for two.
  const std::string large = SamplePicture("coffee.png");
  const std::string small = SamplePicture("astronaut.png");
  for (const std::string& picture : {large, small}) {
    const Outcome outcome = RunPxl({"modes", picture, picture, "-o", Path("sheet.png")},
                                   {{"PXL_MEMORY_BUDGET", "300000"}});
    EXPECT_EQ(outcome.code, 1);
    const std::string name = picture == large ? large : Path("sheet.png");
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + name + ": Unable to allocate"))
        << outcome.errors;
    EXPECT_THAT(folder_.Names(), testing::IsEmpty());
  }
}

TEST_F(ModesSheet, ReportsAMissingFont) {
  const std::string a = SamplePicture("coffee.png");
  const Outcome outcome =
      RunPxl({"modes", a, a, "-o", Path("sheet.png")}, {{"PXL_FONT", "/no/font.ttf"}});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "pxl: /no/font.ttf: is not a usable font\n");
  EXPECT_THAT(folder_.Names(), testing::IsEmpty());
}
