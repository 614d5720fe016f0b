// Damaged pictures, pictures that are too large, and other files: one line, exit code
// 1, and no output.
#include <gmock/gmock.h>

#include "tests/tools/support/exr_maker.h"
#include "tests/tools/support/png_maker.h"
#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

constexpr int kRgb = 2;

class HostilePicture : public testing::Test {
 protected:
  // The message of convert about a file of these bytes, after its name.
  std::string ReasonAgainst(const std::string& bytes) {
    WriteBytes(folder_ / "in", bytes);
    const std::string in = (folder_ / "in").string();
    std::vector<std::string> arguments = {"convert", in,  "-o", (folder_ / "out.png").string(),
                                          "--depth", "32"};
    arguments.insert(arguments.end(), options_.begin(), options_.end());
    const Outcome outcome = RunPxl(arguments);
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.output, "");
    EXPECT_THAT(folder_.Names(), ElementsAre("in"));
    const std::string start = "pxl: " + in + ": ";
    EXPECT_TRUE(IsOneLine(outcome.errors, start)) << outcome.errors;
    return outcome.errors.substr(std::min(start.size(), outcome.errors.size()));
  }

  std::string PngReason(std::uint32_t width, std::uint32_t height, int bits = 8) {
    return ReasonAgainst(MakePngHeader(width, height, bits, kRgb));
  }

  // More than any header can have, so that the other limits apply.
  void AllowEverySize() { options_ = kEverySize; }

  static const inline std::vector<std::string> kEverySize = {"--max-pixels",
                                                             "18446744073709551615"};
  std::vector<std::string> options_;
  TemporaryFolder folder_;
};

std::string SmallExr() {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {3, 3}};
  recipe.value = [](int, int, const std::string&) { return 0.5F; };
  return MakeExr(recipe);
}

std::string ExrOfSize(int width, int height) {
  return WithWindow(SmallExr(), "displayWindow", {{0, 0}, {width - 1, height - 1}});
}

}  // namespace

TEST_F(HostilePicture, ThatIsNoPictureIsNamed) {
  for (const std::string bytes : {"", "x", "GIF89a", "\x89PNG\r\n"}) {
    EXPECT_EQ(ReasonAgainst(bytes), "is neither a PNG nor an OpenEXR file\n");
  }
}

TEST_F(HostilePicture, WithoutPixelsIsRefused) {
  EXPECT_THAT(PngReason(0, 4), HasSubstr("Image width is zero"));
  EXPECT_THAT(PngReason(4, 0), HasSubstr("Image height is zero"));
}

TEST_F(HostilePicture, WithLongerRowsThanAWorldsIsRefusedInTheModulesWords) {
  AllowEverySize();
  // Row bytes of 32767 pixels, of 4 bytes with one to spare, of 8 without.
  EXPECT_EQ(PngReason(32767, 4), "row size too large (131072).\n");
  EXPECT_EQ(PngReason(32766, 4), "row size too large (131072).\n");
  EXPECT_EQ(PngReason(32767, 4, 16), "row size too large (262144).\n");
  EXPECT_EQ(ReasonAgainst(ExrOfSize(32767, 4)), "row size too large (524272).\n");
}

TEST_F(HostilePicture, OverTwoGigabytesIsRefusedInTheModulesWords) {
  AllowEverySize();
  EXPECT_THAT(PngReason(30000, 30000), HasSubstr("Image buffers of size 30000 x 30000 @ 8 bpc "
                                                 "(3.4 GB) exceed internal limits."));
  EXPECT_THAT(PngReason(20000, 20000, 16), HasSubstr("20000 x 20000 @ 16 bpc (3.0 GB)"));
  EXPECT_THAT(ReasonAgainst(ExrOfSize(20000, 20000)), HasSubstr("20000 x 20000 @ 32 bpc (6.0 GB)"));
}

TEST_F(HostilePicture, TooLargeForALaterDepthIsRefusedBeforeItIsDecoded) {
  WriteBytes(folder_ / "in", MakePngHeader(20000, 20000, 8, kRgb));
  const Outcome outcome =
      RunPxl({"convert", (folder_ / "in").string(), "-o", (folder_ / "out.exr").string(), "--depth",
              "128", kEverySize[0], kEverySize[1]});
  EXPECT_THAT(outcome.errors, HasSubstr("20000 x 20000 @ 32 bpc (6.0 GB) exceed internal limits"));
}

TEST_F(HostilePicture, WithSidesBeyondEveryWorldIsRefused) {
  AllowEverySize();
  const std::string limit = " pixels: the longest side of a World is 32767\n";
  EXPECT_EQ(PngReason(100000, 100000), "100000 x 100000" + limit);
  EXPECT_EQ(PngReason(4, 32768), "4 x 32768" + limit);
  EXPECT_EQ(PngReason(2147483647, 2147483647, 16), "2147483647 x 2147483647" + limit);
  EXPECT_EQ(ReasonAgainst(ExrOfSize(2147483647, 2147483647)), "2147483647 x 2147483647" + limit);
}

TEST_F(HostilePicture, OfANegativeSizeIsRefused) {
  EXPECT_THAT(PngReason(0xFFFFFFFFU, 0xFFFFFFFFU), HasSubstr("damaged PNG: "));
  EXPECT_THAT(ReasonAgainst(ExrOfSize(-5, -5)), HasSubstr("empty display window"));
}

TEST_F(HostilePicture, CutOffAtManyLengthsIsRefused) {
  for (const std::string& sample : SamplePictures()) {
    const std::string bytes = ReadBytes(sample);
    for (std::size_t length = 8; length < bytes.size(); length = length * 3 / 2 + 1) {
      EXPECT_THAT(ReasonAgainst(bytes.substr(0, length)), HasSubstr("damaged ")) << length;
    }
    EXPECT_THAT(ReasonAgainst(bytes.substr(0, bytes.size() - 1)), HasSubstr("damaged "));
  }
}

TEST_F(HostilePicture, OfAnUnsupportedKindIsRefusedWithTheReason) {
  EXPECT_EQ(ReasonAgainst(MakeMultiPartExr()),
            "OpenEXR files of several parts are not supported\n");
  EXPECT_EQ(ReasonAgainst(MakeDeepExr()), "deep OpenEXR files are not supported\n");
  EXPECT_EQ(ReasonAgainst(MakeLuminanceChromaExr()),
            "luminance/chroma OpenEXR files are not supported\n");
}

TEST_F(HostilePicture, IsNotShownEither) {
  WriteBytes(folder_ / "in", MakePngHeader(30000, 30000, 16, kRgb));
  const std::string in = (folder_ / "in").string();
  const Outcome outcome = RunPxl({"info", in, kEverySize[0], kEverySize[1]});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + in + ": Image buffers of size 30000 x 30000"))
      << outcome.errors;
  EXPECT_EQ(outcome.output, "");
}

TEST_F(HostilePicture, OfMorePixelsThanTheLimitIsRefused) {
  const std::string limit = " pixels, more than the 268435456 that --max-pixels allows\n";
  EXPECT_EQ(PngReason(16385, 16384), "16385 x 16384" + limit);
  EXPECT_EQ(PngReason(2147483647, 2147483647, 16), "2147483647 x 2147483647" + limit);
  EXPECT_EQ(ReasonAgainst(ExrOfSize(20000, 20000)), "20000 x 20000" + limit);
}

TEST_F(HostilePicture, WithALargerDataWindowThanTheLimitIsRefused) {
  const std::string wide = WithWindow(SmallExr(), "dataWindow", {{-60000, 0}, {60000, 9999}});
  EXPECT_EQ(ReasonAgainst(wide),
            "a data window of 120001 x 10000 pixels, more than the 268435456 that --max-pixels "
            "allows\n");
}

TEST_F(HostilePicture, IsHeldToTheLimitByEveryVerbThatReadsPictures) {
  const std::string in = SamplePicture("astronaut.png");
  const pxl::PictureHeader header = ReadPictureFile(in).header;
  const std::int64_t pixels = header.width * header.height;
  const std::string out = (folder_ / "out.png").string();
  for (const std::vector<std::string>& verb :
       std::vector<std::vector<std::string>>{{"convert", in, "-o", out, "--depth", "32"},
                                             {"info", in},
                                             {"demo", in, "-o", (folder_ / "demo").string()},
                                             {"modes", in, in, "-o", out},
                                             {"sheet", in, "-o", out}}) {
    std::vector<std::string> arguments = verb;
    arguments.insert(arguments.end(), {"--max-pixels", std::to_string(pixels - 1)});
    const Outcome refused = RunPxl(arguments);
    EXPECT_EQ(refused.code, 1) << verb[0];
    EXPECT_EQ(refused.errors, "pxl: " + in + ": " + SizeText(header) + ", more than the " +
                                  std::to_string(pixels - 1) + " that --max-pixels allows\n");
    EXPECT_FALSE(std::filesystem::exists(out));
    arguments.back() = std::to_string(pixels);
    EXPECT_EQ(RunPxl(arguments).code, 0) << verb[0];
    std::filesystem::remove(out);
  }
}

TEST_F(HostilePicture, IsNotHeldToALimitThatIsNone) {
  for (const std::string limit : {"0", "-5", "many", "1.5", ""}) {
    const Outcome outcome = RunPxl({"info", SamplePicture("coffee.png"), "--max-pixels", limit});
    EXPECT_EQ(outcome.code, 2) << limit;
    EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: --max-pixels: ")) << outcome.errors;
  }
}
