// Pictures of 8 bits: indices into the standard colours.
#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <cstdlib>

#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/sheet_pictures.h"
#include "tests/tools/support/temporary_folder.h"

using testing::HasSubstr;
using testing::IsEmpty;

namespace {

using Rgb = std::array<int, 3>;

// A cube of six levels from white down, without black; ramps of the values between
// them in red, green, blue and grey; black.
std::vector<Rgb> StandardColours() {
  std::vector<Rgb> colours;
  for (int i = 0; i < 215; ++i) {
    colours.push_back({255 - i / 36 * 51, 255 - i / 6 % 6 * 51, 255 - i % 6 * 51});
  }
  for (const Rgb ramp : {Rgb{1, 0, 0}, Rgb{0, 1, 0}, Rgb{0, 0, 1}, Rgb{1, 1, 1}}) {
    for (int level = 14; level > 0; --level) {
      if (level % 3 == 0) continue;
      const int value = level * 17;
      colours.push_back({ramp[0] * value, ramp[1] * value, ramp[2] * value});
    }
  }
  colours.push_back({0, 0, 0});
  return colours;
}

Rgb ColourAt(const pxl::Picture& picture, std::int64_t x, std::int64_t y) {
  const std::byte* pixel = picture.Row(y) + 4 * x;
  return {std::to_integer<int>(pixel[1]), std::to_integer<int>(pixel[2]),
          std::to_integer<int>(pixel[3])};
}

Rgb Nearest(const Rgb& wanted) {
  const auto byte = [&](std::size_t c) { return static_cast<std::uint8_t>(wanted[c]); };
  const Pixel8 nearest = NearestStandardColour({0xFF, byte(0), byte(1), byte(2)});
  return {nearest[1], nearest[2], nearest[3]};
}

Rgb MeanOf(const pxl::Picture& picture) {
  std::array<double, 3> sums{};
  for (std::int64_t y = 0; y < picture.header.height; ++y) {
    for (std::int64_t x = 0; x < picture.header.width; ++x) {
      for (std::size_t c = 0; c < 3; ++c) sums[c] += ColourAt(picture, x, y)[c];
    }
  }
  const auto pixels = static_cast<double>(picture.header.width * picture.header.height);
  return {static_cast<int>(std::lround(sums[0] / pixels)),
          static_cast<int>(std::lround(sums[1] / pixels)),
          static_cast<int>(std::lround(sums[2] / pixels))};
}

class IndexedPictures : public testing::Test {
 protected:
  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  pxl::Picture Converted(const std::string& input, const std::vector<std::string>& options,
                         const std::string& output = "out.png") {
    std::vector<std::string> arguments = {"convert", input, "-o", Path(output)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    return ReadPictureFile(folder_ / output);
  }

  // A picture of one colour.
  std::string Flat(const Rgb& colour) {
    PngRecipe recipe;
    recipe.width = 40;
    recipe.height = 40;
    recipe.sample = [&](auto, auto, int c) {
      return static_cast<unsigned>(colour[static_cast<std::size_t>(c)]);
    };
    WriteBytes(folder_ / "flat.png", MakePng(recipe));
    return Path("flat.png");
  }

  TemporaryFolder folder_;
};

}  // namespace

TEST_F(IndexedPictures, TakeTheNearestColours) {
  const std::string input = SamplePicture("coffee.png");
  const pxl::Picture before = ReadPictureFile(input);
  const pxl::Picture after = Converted(input, {"--depth", "8"});
  EXPECT_EQ(after.header.format, "PNG, 8 bits a channel, palette");
  for (std::int64_t y = 0; y < after.header.height; y += 7) {
    for (std::int64_t x = 0; x < after.header.width; ++x) {
      ASSERT_EQ(ColourAt(after, x, y), Nearest(ColourAt(before, x, y))) << x << ", " << y;
    }
  }
}

TEST_F(IndexedPictures, HoldEveryStandardColourAsItIs) {
  const std::vector<Rgb> colours = StandardColours();
  ASSERT_EQ(colours.size(), 256U);
  PngRecipe recipe;
  recipe.width = 256;
  recipe.sample = [&](auto x, auto, int c) {
    return static_cast<unsigned>(colours[x][static_cast<std::size_t>(c)]);
  };
  WriteBytes(folder_ / "in.png", MakePng(recipe));
  for (const std::string dither : {"", "--dither"}) {
    std::vector<std::string> options = {"--depth", "8"};
    if (!dither.empty()) options.emplace_back(dither);
    const pxl::Picture picture = Converted(Path("in.png"), options);
    for (std::int64_t x = 0; x < 256; ++x) {
      ASSERT_EQ(ColourAt(picture, x, 0), colours[static_cast<std::size_t>(x)]) << dither;
    }
  }
}

TEST_F(IndexedPictures, KeepTheMeanWhenDithered) {
  const Rgb colour = {120, 77, 201};
  const pxl::Picture plain = Converted(Flat(colour), {"--depth", "8"});
  const pxl::Picture dithered = Converted(Flat(colour), {"--depth", "8", "--dither"});
  EXPECT_EQ(MeanOf(plain), Nearest(colour));
  const Rgb mean = MeanOf(dithered);
  for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(mean[c], colour[c], 4);
}

TEST_F(IndexedPictures, AreReachedAndLeftByWayOf32Bits) {
  const std::string cat = SamplePicture("cat-float.exr");
  const Outcome outcome =
      RunPxl({"convert", cat, "-o", Path("out.exr"), "--via", "8", "--depth", "64", "--verbose"});
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.output,
            cat + ": 128 bits, 138 x 100, 220820 bytes from the heap, 2208 a row\n" + cat +
                ": 32 bits, 138 x 100, 56000 bytes of a drawing surface, 560 a row\n" + cat +
                ": 8 bits, 138 x 100, 14400 bytes of a drawing surface, 144 a row\n" + cat +
                ": 32 bits, 138 x 100, 56000 bytes of a drawing surface, 560 a row\n" + cat +
                ": 64 bits, 138 x 100, 110420 bytes from the heap, 1104 a row\n");
}

TEST_F(IndexedPictures, ComeBackOpaqueInTheSameColours) {
  PngRecipe recipe;
  recipe.width = 100;
  recipe.height = 50;
  recipe.sample = [](auto x, auto y, int c) {
    return (x * 7 + y * 11 * static_cast<unsigned>(c)) & 0xFFU;
  };
  WriteBytes(folder_ / "in.png", MakePng(recipe));
  const pxl::Picture indexed = Converted(Path("in.png"), {"--depth", "8"}, "indexed.png");
  const pxl::Picture back = Converted(Path("in.png"), {"--via", "8", "--depth", "32"}, "back.png");
  EXPECT_TRUE(indexed.pixels == back.pixels);
  EXPECT_EQ(back.pixels[0], std::byte{0xFF});
  const pxl::Picture floats = Converted(Path("in.png"), {"--depth", "8"}, "out.exr");
  EXPECT_EQ(floats.header.samples, pxl::SampleType::Float);
  const pxl::Picture again = Converted(Path("out.exr"), {"--mapped", "--depth", "32"}, "again.png");
  EXPECT_TRUE(again.pixels == indexed.pixels);
}

TEST_F(IndexedPictures, ReportThatTransparencyIsLost) {
  PngRecipe recipe;
  recipe.colourType = 6;
  recipe.width = 3;
  recipe.sample = [](auto x, auto, int c) { return c == 3 && x == 2 ? 254U : 255U; };
  WriteBytes(folder_ / "in.png", MakePng(recipe));
  const Outcome outcome =
      RunPxl({"convert", Path("in.png"), "-o", Path("out.png"), "--depth", "8"});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors,
            "pxl: " + Path("in.png") + ": note: not kept in the output: transparency\n");
}

TEST_F(IndexedPictures, AreNotForMappedFilesNorDitheringForOtherDepths) {
  const std::vector<std::string> job = {"convert", SamplePicture("coffee.png"), "-o",
                                        Path("out.png")};
  const auto errors = [&](const std::vector<std::string>& options) {
    std::vector<std::string> arguments = job;
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 2);
    return outcome.errors;
  };
  EXPECT_EQ(errors({"--depth", "8", "--mapped"}),
            "pxl: --mapped: excludes 8 bits, which only the drawing layer makes\n");
  EXPECT_EQ(errors({"--depth", "64", "--dither"}), "pxl: --dither: is for --depth 8 or --via 8\n");
  EXPECT_THAT(folder_.Names(), IsEmpty());
}
