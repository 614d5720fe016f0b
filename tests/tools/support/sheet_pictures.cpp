// Finds pictures on sheets and compares sheets with golden ones.
#include "tests/tools/support/sheet_pictures.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <vector>

#include "tests/tools/support/program.h"
#include "tools/pxl/formats/picture_file.h"
#include "tools/pxl/sheets/contact_sheet.h"

namespace {

namespace fs = std::filesystem;

int Squared(int value) {
  return value * value;
}

int Distance(const Pixel8& a, const Pixel8& b) {
  return Squared(a[1] - b[1]) + Squared(a[2] - b[2]) + Squared(a[3] - b[3]);
}

// A cube of six levels without black, four ramps between its levels, black.
std::vector<Pixel8> MakeStandardColours() {
  std::vector<Pixel8> colours;
  const auto add = [&](int r, int g, int b) {
    colours.push_back({255, static_cast<std::uint8_t>(r), static_cast<std::uint8_t>(g),
                       static_cast<std::uint8_t>(b)});
  };
  for (int i = 0; i < 215; ++i) add(255 - i / 36 * 51, 255 - i / 6 % 6 * 51, 255 - i % 6 * 51);
  std::vector<int> ramp;
  for (int value = 238; value > 0; value -= 17) {
    if (value % 51 != 0) ramp.push_back(value);
  }
  for (const int value : ramp) add(value, 0, 0);
  for (const int value : ramp) add(0, value, 0);
  for (const int value : ramp) add(0, 0, value);
  for (const int value : ramp) add(value, value, value);
  add(0, 0, 0);
  return colours;
}

const std::vector<Pixel8>& StandardColours() {
  static const std::vector<Pixel8> colours = MakeStandardColours();
  return colours;
}

bool ShowsAt(const pxl::Picture& sheet, const pxl::Picture& picture, int left, int top) {
  for (int y = 0; y < picture.header.height; ++y) {
    const std::byte* row = picture.Row(y);
    if (!std::equal(row, row + picture.RowBytes(), sheet.Row(top + y) + std::ptrdiff_t{4} * left)) {
      return false;
    }
  }
  return true;
}

}  // namespace

pxl::Picture PictureBy(int width, int height, const PixelFunction& pixel) {
  pxl::Picture picture = pxl::NewPicture(width, height, pxl::SampleType::Integer8);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const Pixel8 value = pixel(x, y);
      std::transform(value.begin(), value.end(), picture.Rows().Row(y) + std::ptrdiff_t{4} * x,
                     [](std::uint8_t channel) { return std::byte{channel}; });
    }
  }
  return picture;
}

Pixel8 PixelOf(const pxl::Picture& picture, int x, int y) {
  Pixel8 pixel{};
  const std::byte* from = picture.Row(y) + std::ptrdiff_t{4} * x;
  std::transform(from, from + 4, pixel.begin(), std::to_integer<std::uint8_t>);
  return pixel;
}

void SavePng(const fs::path& path, const pxl::Picture& picture) {
  pxl::WritePictureFile(path, pxl::FileFormat::Png, picture.header,
                        [&](std::int64_t y) { return picture.Row(y); });
}

pxl::Picture PartOf(const pxl::Picture& picture, int left, int top, int width, int height) {
  return PictureBy(width, height,
                   [&](int x, int y) { return PixelOf(picture, left + x, top + y); });
}

std::optional<int> FindBelow(const pxl::Picture& sheet, const pxl::Picture& picture, int left,
                             int top) {
  if (left + picture.header.width > sheet.header.width) return std::nullopt;
  for (; top + picture.header.height <= sheet.header.height; ++top) {
    if (ShowsAt(sheet, picture, left, top)) return top;
  }
  return std::nullopt;
}

int ColumnLeft(int column, int cellWidth) {
  return pxl::kSheetGutter + column * (cellWidth + pxl::kSheetGutter);
}

bool IsStandardColour(const Pixel8& pixel) {
  return Distance(NearestStandardColour(pixel), pixel) == 0;
}

Pixel8 NearestStandardColour(const Pixel8& pixel) {
  return *std::min_element(
      StandardColours().begin(), StandardColours().end(),
      [&](const Pixel8& a, const Pixel8& b) { return Distance(a, pixel) < Distance(b, pixel); });
}

void ExpectNoSheet(const TemporaryFolder& folder, const std::vector<std::string>& arguments,
                   int code, const std::string& line) {
  const Outcome outcome = RunPxl(arguments);
  EXPECT_EQ(outcome.code, code);
  EXPECT_TRUE(IsOneLine(outcome.errors, "pxl: " + line)) << outcome.errors;
  EXPECT_EQ(outcome.output, "");
  EXPECT_THAT(folder.Names(), testing::Not(testing::Contains("sheet.png")));
}

void ExpectGolden(const fs::path& file, const std::string& name) {
  const std::string golden = SamplePicture("golden/" + name);
  const pxl::Picture expected = ReadPictureFile(golden);
  const pxl::Picture picture = ReadPictureFile(file);
  if (picture.header.width == expected.header.width &&
      picture.header.height == expected.header.height && picture.pixels == expected.pixels) {
    return;
  }
  const fs::path kept = fs::path(testing::TempDir()) / ("pxl-new-" + name);
  fs::copy_file(file, kept, fs::copy_options::overwrite_existing);
  ADD_FAILURE() << kept << " differs from " << golden << "; if that is meant, it takes its place";
}
