// The file libraries of the Windows build, with files that it can write itself.
#include <gmock/gmock.h>

#include <array>
#include <cstring>
#include <sstream>

#include "tests/tools/support/program.h"
#include "tests/tools/support/temporary_folder.h"
#include "tools/pxl/formats/exr/exr_reader.h"
#include "tools/pxl/formats/exr/exr_writer.h"
#include "tools/pxl/formats/picture_file.h"
#include "tools/pxl/formats/png/png_file.h"
#include "tools/pxl/system/failure.h"

using namespace pxl;

namespace {

Picture PatternOf(SampleType samples) {
  Picture picture = NewPicture(23, 9, samples);
  unsigned state = 1;
  for (std::byte& byte : picture.pixels) {
    state = state * 1664525U + 1013904223U;
    // A float keeps a small exponent then.
    byte = static_cast<std::byte>(state >> 26);
  }
  return picture;
}

std::string EncodedPng(const Picture& picture) {
  std::ostringstream stream;
  WritePng(stream, picture.header, [&](std::int64_t y) { return picture.Row(y); });
  return stream.str();
}

std::string EncodedExr(const Picture& picture) {
  std::stringstream stream;
  WriteExr(stream, picture.header, [&](std::int64_t y) { return picture.Row(y); });
  return stream.str();
}

Picture DecodedPng(const std::string& file) {
  std::istringstream stream(file);
  return ReadPicture(*OpenPng(stream));
}

Picture DecodedExr(const std::string& file) {
  std::istringstream stream(file);
  return ReadPicture(*OpenExr(stream));
}

template <typename Work>
std::string ReasonOf(Work work) {
  try {
    work();
  } catch (const Failure& failure) {
    return failure.what();
  }
  return "";
}

const std::vector<PngChunk> kChunks = {{"gAMA", {0, 0, 0xB1, 0x8F}}, {"sRGB", {0}}};

}  // namespace

TEST(PngFile, SurvivesWritingAndReading) {
  Picture picture = PatternOf(SampleType::Integer8);
  picture.header.colour.chunks = kChunks;
  const Picture read = DecodedPng(EncodedPng(picture));
  EXPECT_EQ(read.header.format, "PNG, 8 bits a channel, RGBA");
  EXPECT_EQ(read.pixels, picture.pixels);
  ASSERT_EQ(read.header.colour.chunks.size(), 2U);
  EXPECT_EQ(read.header.colour.chunks[0].name, "gAMA");
  EXPECT_EQ(read.header.colour.chunks[0].data, kChunks[0].data);
}

TEST(PngFile, HoldsTheColoursOfAPalette) {
  Picture picture = NewPicture(2, 1, SampleType::Integer8);
  picture.header.palette = {{1, 2, 3}, {40, 50, 60}};
  picture.pixels = {std::byte{1}, std::byte{0}};
  const auto value = [](int number) { return static_cast<std::byte>(number); };
  EXPECT_EQ(DecodedPng(EncodedPng(picture)).pixels,
            (std::vector<std::byte>{value(255), value(40), value(50), value(60), value(255),
                                    value(1), value(2), value(3)}));
}

TEST(PngFile, Of16BitsIsReadAndNotWritten) {
  const Picture deep = ReadPictureFile(SamplePicture("raccoon-16.png"));
  EXPECT_EQ(deep.header.samples, SampleType::Integer16);
  EXPECT_EQ(deep.header.format, "PNG, 16 bits a channel, RGB");
  EXPECT_EQ(ReasonOf([&] { EncodedPng(deep); }),
            "PNG of 16 bits a channel cannot be written on this system; OpenEXR can");
}

TEST(PictureFile, OfMorePixelsThanAllowedIsRefused) {
  for (const std::string& sample : SamplePictures()) {
    const PictureHeader header = ReadPictureFile(sample).header;
    const auto pixels = static_cast<std::uint64_t>(header.width * header.height);
    EXPECT_EQ(ReasonOf([&] { InputPicture(sample, pixels); }), "");
    EXPECT_EQ(ReasonOf([&] { InputPicture(sample, pixels - 1); }),
              SizeText(header) + ", more than the " + std::to_string(pixels - 1) +
                  " that --max-pixels allows");
  }
}

TEST(PngFile, CutOffAnywhereIsRefused) {
  const std::string file = EncodedPng(PatternOf(SampleType::Integer8));
  for (std::size_t size = 8; size < file.size(); ++size) {
    EXPECT_NE(ReasonOf([&] { DecodedPng(file.substr(0, size)); }), "") << size;
  }
}

TEST(PngFile, WithAnyByteDamagedIsRefused) {
  const std::string file = EncodedPng(PatternOf(SampleType::Integer8));
  for (std::size_t i = 8; i < file.size(); ++i) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
    EXPECT_NE(ReasonOf([&] { DecodedPng(damaged); }), "") << i;
  }
}

TEST(ExrFile, SurvivesWritingAndReading) {
  Picture picture = PatternOf(SampleType::Float);
  picture.header.colour.chromaticities = {0.3127, 0.329, 0.64, 0.33, 0.3, 0.6, 0.15, 0.06};
  const Picture read = DecodedExr(EncodedExr(picture));
  EXPECT_EQ(read.header.format, "OpenEXR, float, RGBA");
  EXPECT_EQ(read.pixels, picture.pixels);
  ASSERT_TRUE(read.header.colour.chromaticities.has_value());
  for (std::size_t i = 0; i < 8; ++i) {
    EXPECT_FLOAT_EQ(static_cast<float>((*read.header.colour.chromaticities)[i]),
                    static_cast<float>((*picture.header.colour.chromaticities)[i]));
  }
}

TEST(ExrFile, CutOffAnywhereInItsHeaderIsRefused) {
  const std::string file = EncodedExr(PatternOf(SampleType::Float));
  for (std::size_t size = 4; size < 300; ++size) {
    EXPECT_NE(ReasonOf([&] { DecodedExr(file.substr(0, size)); }), "") << size;
  }
}
