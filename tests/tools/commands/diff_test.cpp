// pxl diff: its rules, its reports and its own exit codes.
#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <limits>
#include <nlohmann/json.hpp>

#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using nlohmann::json;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr int kGrey = 0;
constexpr int kRgb = 2;
constexpr int kPalette = 3;
constexpr int kGreyAlpha = 4;
constexpr int kRgba = 6;

constexpr float kInfinity = std::numeric_limits<float>::infinity();

class Diff : public testing::Test {
 protected:
  using Sample = std::function<unsigned(std::uint32_t x, std::uint32_t y, int c)>;

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }

  // A PNG of 4 x 3 pixels that are all 100, apart from what `sample` adds.
  std::string Png(const std::string& name, const Sample& sample = {}, int bits = 8,
                  int colourType = kRgba) {
    PngRecipe recipe;
    recipe.width = 4;
    recipe.height = 3;
    recipe.bits = bits;
    recipe.colourType = colourType;
    recipe.palette = std::vector<std::array<std::uint8_t, 3>>(256);
    if (colourType != kPalette) recipe.palette.clear();
    recipe.sample = [&](auto x, auto y, int c) { return 100 + (sample ? sample(x, y, c) : 0); };
    WriteBytes(folder_ / name, MakePng(recipe));
    return Path(name);
  }

  // An OpenEXR file of one pixel whose channels all have the value.
  std::string Exr(const std::string& name, float value, Imf::PixelType type = Imf::FLOAT) {
    ExrRecipe recipe;
    recipe.type = type;
    recipe.value = [=](int, int, const std::string&) { return value; };
    WriteBytes(folder_ / name, MakeExr(recipe));
    return Path(name);
  }

  static Outcome Run(const std::string& a, const std::string& b,
                     std::vector<std::string> options = {}) {
    options.insert(options.begin(), {"diff", a, b});
    return RunPxl(options);
  }

  // The report as JSON, with a check of the exit code.
  static json Report(const std::string& a, const std::string& b,
                     std::vector<std::string> options = {}) {
    options.emplace_back("--json");
    const Outcome outcome = Run(a, b, options);
    EXPECT_EQ(outcome.errors, "");
    json report = json::parse(outcome.output);
    EXPECT_EQ(outcome.code, report["same"] == true ? 0 : 1);
    return report;
  }

  json ReportOfFloats(float a, float b, const std::vector<std::string>& options = {}) {
    return Report(Exr("a.exr", a), Exr("b.exr", b), options);
  }

  static void ExpectError(const Outcome& outcome, const std::string& line) {
    EXPECT_EQ(outcome.code, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.errors, "pxl: " + line + "\n");
  }

  static void ExpectMismatch(const json& report, const std::string& what, const std::string& a,
                             const std::string& b) {
    EXPECT_EQ(report["same"], false);
    EXPECT_EQ(report["mismatch"], json({{"what", what}, {"a", a}, {"b", b}}));
    EXPECT_EQ(report["differing"], nullptr);
  }

  TemporaryFolder folder_;
};

// 3 more in green at 1, 2, and 5 less in blue and 1 more in red at 3, 2.
unsigned ThreeSamples(std::uint32_t x, std::uint32_t y, int c) {
  if (y != 2) return 0;
  if (x == 1 && c == 1) return 3;
  if (x == 3 && c == 2) return static_cast<unsigned>(-5);
  return x == 3 && c == 0 ? 1 : 0;
}

}  // namespace

TEST_F(Diff, FindsAFileTheSameAsItself) {
  for (const std::string& picture : SamplePictures()) {
    const Outcome outcome = Run(picture, picture);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(outcome.errors, "");
    std::string verdict = picture;
    verdict.append(" and ").append(picture).append(" are the same\n");
    EXPECT_EQ(outcome.output, verdict);
  }
}

TEST_F(Diff, ComparesPicturesAndNotFiles) {
  const pxl::PngChunk gamma = {"gAMA", {0, 0, 0xB1, 0x8F}};
  PngRecipe recipe;
  recipe.sample = [](auto, auto, int) { return 7U; };
  WriteBytes(folder_ / "a.png", MakePng(recipe));
  recipe.interlaced = true;
  recipe.chunks = {gamma};
  WriteBytes(folder_ / "b.png", MakePng(recipe));
  EXPECT_EQ(Run(Path("a.png"), Path("b.png")).code, 0);
}

TEST_F(Diff, CountsPixelsAndSamplesAndPrintsTheFirstAndTheLargest) {
  const std::string a = Png("a.png");
  const std::string b = Png("b.png", ThreeSamples);
  const json report = Report(a, b);
  EXPECT_EQ(report["a"], a);
  EXPECT_EQ(report["b"], b);
  EXPECT_EQ(report["tolerance"], 0);
  EXPECT_EQ(report["mismatch"], nullptr);
  const json& differing = report["differing"];
  EXPECT_EQ(differing["pixels"], 2);
  EXPECT_EQ(differing["samples"], 3);
  EXPECT_EQ(differing["withoutDistance"], 0);
  EXPECT_EQ(differing["first"],
            json({{"x", 1}, {"y", 2}, {"channel", "green"}, {"a", 100}, {"b", 103}}));
  EXPECT_EQ(differing["largest"]["fileSteps"], 5);
  EXPECT_DOUBLE_EQ(differing["largest"]["steps8"], 5.0);
  EXPECT_DOUBLE_EQ(differing["largest"]["steps16"], 5.0 * 32768.0 / 255.0);
}

TEST_F(Diff, IsReadableWithoutJson) {
  const std::string a = Png("a.png");
  const std::string b = Png("b.png", ThreeSamples);
  const Outcome outcome = Run(a, b);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_EQ(outcome.output,
            a + " and " + b +
                " differ\n"
                "  differing  2 of 12 pixels, 3 samples\n"
                "  first      x 1, y 2, green: 100 against 103\n"
                "  largest    5 steps of the files; 5 steps of 8 bits, 642.51 steps of 16 bits "
                "(full scale 32768)\n");
}

TEST_F(Diff, Prints16BitsAsInTheFiles) {
  const std::string a = Png("a.png", {}, 16);
  const auto twoAtThree = [](auto x, auto, int) { return x == 3 ? 2U : 0U; };
  const std::string b = Png("b.png", twoAtThree, 16);
  const json differing = Report(a, b)["differing"];
  EXPECT_EQ(differing["pixels"], 3);
  EXPECT_EQ(differing["samples"], 12);
  EXPECT_EQ(differing["first"],
            json({{"x", 3}, {"y", 0}, {"channel", "red"}, {"a", 100}, {"b", 102}}));
  EXPECT_EQ(differing["largest"]["fileSteps"], 2);
  EXPECT_DOUBLE_EQ(differing["largest"]["steps16"], 2.0 * 32768.0 / 65535.0);
  EXPECT_DOUBLE_EQ(differing["largest"]["steps8"], 2.0 * 255.0 / 65535.0);
}

TEST_F(Diff, SeesAlphaAlone) {
  const std::string a = Png("a.png");
  const std::string b =
      Png("b.png", [](auto x, auto y, int c) { return c == 3 && x + y == 5 ? 1U : 0U; });
  const json differing = Report(a, b)["differing"];
  EXPECT_EQ(differing["samples"], 1);
  EXPECT_EQ(differing["first"],
            json({{"x", 3}, {"y", 2}, {"channel", "alpha"}, {"a", 100}, {"b", 101}}));
}

TEST_F(Diff, CountsAGreySampleOnce) {
  const Sample changed = [](auto x, auto y, int c) { return x == 2 && y == 1 && c == 0 ? 9U : 0U; };
  const json differing =
      Report(Png("a.png", {}, 8, kGreyAlpha), Png("b.png", changed, 8, kGreyAlpha))["differing"];
  EXPECT_EQ(differing["samples"], 1);
  EXPECT_EQ(differing["first"]["channel"], "grey");
}

TEST_F(Diff, ToleratesStepsOfTheFiles) {
  const std::string a = Png("a.png");
  const std::string b = Png("b.png", ThreeSamples);
  const json three = Report(a, b, {"--tolerance", "3"});
  EXPECT_EQ(three["tolerance"], 3);
  EXPECT_EQ(three["differing"]["pixels"], 1);
  EXPECT_EQ(three["differing"]["samples"], 1);
  EXPECT_EQ(three["differing"]["first"]["channel"], "blue");
  EXPECT_EQ(Report(a, b, {"--tolerance", "4"})["same"], false);
  const json five = Report(a, b, {"--tolerance", "5"});
  EXPECT_EQ(five["same"], true);
  EXPECT_EQ(five["differing"]["pixels"], 0);
  EXPECT_EQ(five["differing"]["first"], nullptr);
  EXPECT_EQ(five["differing"]["largest"]["fileSteps"], 5);
  EXPECT_THAT(Run(a, b, {"--tolerance", "5"}).output,
              HasSubstr(" are the same within the tolerance\n  largest    5 steps"));

  const std::string deep = Png("deep.png", {}, 16);
  const auto two = [](auto, auto, int) { return 2U; };
  const std::string other = Png("other.png", two, 16);
  EXPECT_EQ(Run(deep, other, {"--tolerance", "1"}).code, 1);
  EXPECT_EQ(Run(deep, other, {"--tolerance", "2"}).code, 0);
}

TEST_F(Diff, ToleratesUlpsOfFloats) {
  const float near = std::nextafter(std::nextafter(0.5F, 1.0F), 1.0F);
  EXPECT_EQ(ReportOfFloats(0.5F, near, {"--tolerance", "1"})["same"], false);
  const json report = ReportOfFloats(0.5F, near, {"--tolerance", "2"});
  EXPECT_EQ(report["same"], true);
  EXPECT_EQ(report["differing"]["largest"]["ulps"], 2);
  EXPECT_DOUBLE_EQ(report["differing"]["largest"]["steps8"], (double{near} - 0.5) * 255.0);

  // Across zero, which is one place for both signs.
  const float least = std::numeric_limits<float>::denorm_min();
  EXPECT_EQ(ReportOfFloats(-least, least)["differing"]["largest"]["ulps"], 2);
  EXPECT_EQ(ReportOfFloats(-1.0F, 1.0F)["differing"]["largest"]["ulps"], 2U * 0x3F800000U);
}

TEST_F(Diff, PrintsFloatsInAllTheirDigits) {
  const float a = 0.1F;
  const float b = std::nextafter(a, 1.0F);
  EXPECT_THAT(Run(Exr("a.exr", a), Exr("b.exr", b)).output,
              HasSubstr("red: 0.100000001 against 0.100000009\n  largest    1 ULPs; "));
  const json first = ReportOfFloats(a, b)["differing"]["first"];
  EXPECT_EQ(first["a"], double{a});
  EXPECT_EQ(first["b"], double{b});
}

TEST_F(Diff, TakesBothZerosForOne) {
  const json report = ReportOfFloats(-0.0F, 0.0F);
  EXPECT_EQ(report["same"], true);
  EXPECT_EQ(report["differing"]["largest"]["ulps"], 0);
}

TEST_F(Diff, TakesEveryNanForOneAndForNoNumber) {
  const float nan = std::nanf("");
  EXPECT_EQ(ReportOfFloats(nan, std::nanf("5"))["same"], true);
  EXPECT_EQ(ReportOfFloats(nan, -nan)["same"], true);
  for (const float other : {0.0F, 1.0F, kInfinity}) {
    const json report = ReportOfFloats(nan, other, {"--tolerance", "18446744073709551615"});
    EXPECT_EQ(report["same"], false) << other;
    EXPECT_EQ(report["differing"]["withoutDistance"], 3);
    EXPECT_EQ(report["differing"]["first"]["a"], "nan");
    EXPECT_EQ(ReportOfFloats(other, nan)["differing"]["first"]["b"], "nan");
  }
}

TEST_F(Diff, CountsInfinitiesWithoutDistance) {
  EXPECT_EQ(ReportOfFloats(kInfinity, kInfinity)["same"], true);
  EXPECT_EQ(ReportOfFloats(-kInfinity, -kInfinity)["same"], true);
  for (const float other : {-kInfinity, std::numeric_limits<float>::max()}) {
    const json report = ReportOfFloats(kInfinity, other, {"--tolerance", "4294967295"});
    EXPECT_EQ(report["same"], false) << other;
    EXPECT_EQ(report["differing"]["withoutDistance"], 3);
    EXPECT_EQ(report["differing"]["largest"]["ulps"], 0);
    EXPECT_EQ(report["differing"]["first"]["a"], "inf");
  }
  EXPECT_THAT(Run(Exr("a.exr", 1.0F), Exr("b.exr", -kInfinity)).output,
              HasSubstr("red: 1 against -inf\n  besides    3 samples where a NaN or an infinity"));
}

TEST_F(Diff, ComparesHalvesAndFloatsByValue) {
  EXPECT_EQ(Run(Exr("a.exr", 0.5F, Imf::HALF), Exr("b.exr", 0.5F)).code, 0);
  EXPECT_EQ(Run(Exr("a.exr", 0.1F, Imf::HALF), Exr("b.exr", 0.1F)).code, 1);
}

TEST_F(Diff, TakesOtherSizesForDifferent) {
  const std::string a = Png("a.png");
  const std::string b = SamplePicture("coffee.png");
  ExpectMismatch(Report(a, b), "size", "4 x 3 pixels", "480 x 320 pixels");
  EXPECT_EQ(Run(a, b).output,
            a + " and " + b + " differ\n  size: 4 x 3 pixels against 480 x 320 pixels\n");
}

TEST_F(Diff, TakesOtherDepthsForDifferent) {
  ExpectMismatch(Report(Png("a.png"), Png("b.png", {}, 16)), "depth", "8-bit integers",
                 "16-bit integers");
  PngRecipe dot;
  dot.sample = [](auto, auto, int) { return 0U; };
  WriteBytes(folder_ / "dot.png", MakePng(dot));
  ExpectMismatch(Report(Exr("a.exr", 0.0F), Path("dot.png")), "depth", "floats", "8-bit integers");
}

TEST_F(Diff, TakesOtherChannelsForDifferentUnlessAnyChannelsIsGiven) {
  const std::string rgb = Png("rgb.png", {}, 8, kRgb);
  const std::string rgba = Png("rgba.png");
  const std::string grey = Png("grey.png", {}, 8, kGrey);
  ExpectMismatch(Report(rgb, rgba), "channels", "RGB", "RGB and alpha");
  ExpectMismatch(Report(grey, rgb), "channels", "grey", "RGB");
  EXPECT_EQ(Report(grey, rgb, {"--any-channels"})["same"], true);
  const json opaque = Report(rgb, rgba, {"--any-channels"});
  EXPECT_EQ(opaque["differing"]["samples"], 12);
  EXPECT_EQ(opaque["differing"]["first"]["channel"], "alpha");
  EXPECT_EQ(opaque["differing"]["first"]["a"], 255);
}

TEST_F(Diff, TakesAPaletteForItsColoursAndTransparencyForAlpha) {
  const std::string palette = Png("palette.png", {}, 8, kPalette);
  const auto dark = [](auto, auto, int) { return static_cast<unsigned>(-100); };
  const std::string black = Png("black.png", dark, 8, kRgb);
  EXPECT_EQ(Run(palette, black).code, 0);
  PngRecipe recipe;
  recipe.width = 4;
  recipe.height = 3;
  recipe.sample = [](auto, auto, int) { return 0U; };
  recipe.transparency = std::string(6, '\x05');
  WriteBytes(folder_ / "keyed.png", MakePng(recipe));
  ExpectMismatch(Report(black, Path("keyed.png")), "channels", "RGB", "RGB and alpha");
}

TEST_F(Diff, DrawsTheDifferencesSoThatAllCanBeSeen) {
  // 1 in red, 200 in green, 3 in alpha.
  const std::string b = Png("b.png", [](auto x, auto y, int c) -> unsigned {
    if (x == 0 && y == 0 && c == 0) return 1;
    if (x == 1 && y == 0 && c == 1) return static_cast<unsigned>(-100);
    return x == 2 && y == 0 && c == 3 ? 3 : 0;
  });
  EXPECT_EQ(Run(Png("a.png"), b, {"-o", Path("out.png")}).code, 1);
  const pxl::Picture picture = ReadPictureFile(Path("out.png"));
  EXPECT_EQ(picture.header.width, 4);
  EXPECT_EQ(picture.header.height, 3);
  const auto pixel = [&](std::size_t x) {
    std::array<int, 4> values{};
    for (std::size_t k = 0; k < 4; ++k) values[k] = std::to_integer<int>(picture.pixels[4 * x + k]);
    return values;
  };
  EXPECT_THAT(pixel(0), ElementsAre(255, 64, 0, 0));
  EXPECT_THAT(pixel(1), ElementsAre(255, 0, 200, 0));
  EXPECT_THAT(pixel(2), ElementsAre(255, 64, 64, 64));
  for (std::size_t x = 3; x < 12; ++x) EXPECT_THAT(pixel(x), ElementsAre(255, 0, 0, 0));
  EXPECT_THAT(folder_.Names(), ElementsAre("a.png", "b.png", "out.png"));
}

TEST_F(Diff, DrawsWhatIsWithinTheToleranceBlackAndWhatHasNoDistanceBright) {
  const std::string a = Png("a.png");
  const std::string b = Png("b.png", ThreeSamples);
  EXPECT_EQ(Run(a, b, {"-o", Path("out.png"), "--tolerance", "5"}).code, 0);
  const pxl::Picture black = ReadPictureFile(Path("out.png"));
  for (std::size_t i = 0; i < black.pixels.size(); ++i) {
    EXPECT_EQ(black.pixels[i], i % 4 == 0 ? std::byte{255} : std::byte{0});
  }
  EXPECT_EQ(Run(Exr("a.exr", 1.0F), Exr("b.exr", kInfinity), {"-o", Path("out.png")}).code, 1);
  EXPECT_EQ(ReadPictureFile(Path("out.png")).pixels, std::vector<std::byte>(4, std::byte{255}));
}

TEST_F(Diff, DrawsNothingOfPicturesThatCannotBeCompared) {
  WriteBytes(folder_ / "out.png", "old");
  const Outcome outcome =
      Run(Png("a.png"), SamplePicture("coffee.png"), {"-o", Path("out.png"), "--json"});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors,
            "pxl: " + Path("out.png") + ": note: not written, since the pictures differ in size\n");
  EXPECT_EQ(ReadBytes(folder_ / "out.png"), "old");
}

TEST_F(Diff, ExitsWithTwoForFilesThatAreNoPictures) {
  const std::string a = Png("a.png");
  const std::string missing = Path("no.png");
  ExpectError(Run(a, missing), missing + ": No such file or directory");
  ExpectError(Run(missing, a), missing + ": No such file or directory");
  WriteBytes(folder_ / "text", "no picture");
  ExpectError(Run(a, Path("text")), Path("text") + ": is neither a PNG nor an OpenEXR file");
  ExpectError(Run(folder_.path().string(), a), folder_.path().string() + ": is a folder");
}

TEST_F(Diff, ExitsWithTwoForPicturesThatCannotBeRead) {
  const std::string a = Png("a.png");
  const std::string whole = ReadBytes(a);
  WriteBytes(folder_ / "cut.png", whole.substr(0, whole.size() - 20));
  const Outcome cut = Run(a, Path("cut.png"));
  EXPECT_EQ(cut.code, 2);
  EXPECT_TRUE(IsOneLine(cut.errors, "pxl: " + Path("cut.png") + ": damaged PNG: "));

  WriteBytes(folder_ / "vast.png", MakePngHeader(40000, 3, 8, kRgba));
  const Outcome vast = Run(Path("vast.png"), Path("vast.png"));
  EXPECT_EQ(vast.code, 2);
  EXPECT_TRUE(IsOneLine(vast.errors, "pxl: " + Path("vast.png") + ": "));
}

TEST_F(Diff, ExitsWithTwoForOutputThatCannotBeWrittenAndForAMissingTranslation) {
  const std::string a = Png("a.png");
  ExpectError(Run(a, a, {"-o", Path("no/out.png")}),
              Path("no/out.png") + ": no such folder: " + Path("no"));
  ExpectError(RunPxl({"--language", Path("no.txt"), "diff", a, a}),
              Path("no.txt") + ": No such file or directory");
  const Outcome full = RunPxlInShell("", {"diff", a, a}, ">/dev/full");
  EXPECT_EQ(full.code, 2);
  EXPECT_TRUE(IsOneLine(full.errors, "pxl: standard output: "));
}

TEST_F(Diff, ExitsWithTwoForAnUnusableCommandLine) {
  const std::string a = Png("a.png");
  ExpectError(RunPxl({"diff", a}), "B: is required");
  ExpectError(RunPxl({"diff", a, a, a}), a + ": is not expected");
  ExpectError(RunPxl({"diff", a, a, "--tolerance", "-1"}), "--tolerance: -1 is not a whole number");
  ExpectError(RunPxl({"diff", a, a, "--tolerance", "0.5"}),
              "--tolerance: 0.5 is not a whole number");
  ExpectError(RunPxl({"diff", a, a, "-o", Path("out.exr")}),
              Path("out.exr") + ": the ending must be .png");
  ExpectError(RunPxl({"diff", a, SamplePicture("coffee.png"), "-o", a}),
              a + ": is an input as well");
  EXPECT_THAT(folder_.Names(), ElementsAre("a.png"));
}

TEST_F(Diff, ConfirmsThatAConversionAndItsReturnLoseNothing) {
  const std::string raccoon = SamplePicture("raccoon-16.png");
  RunPxl({"convert", raccoon, "-o", Path("there.exr"), "--depth", "128"});
  RunPxl({"convert", raccoon, "-o", Path("here.png"), "--depth", "64"});
  RunPxl({"convert", Path("there.exr"), "-o", Path("back.png"), "--depth", "64"});
  EXPECT_EQ(Run(Path("here.png"), Path("back.png")).code, 0);
  // 16 bits of a file are more than those of a World.
  const json report = Report(raccoon, Path("here.png"), {"--any-channels"});
  EXPECT_EQ(report["differing"]["largest"]["fileSteps"], 1);
}
