// OpenEXR files with wrong sizes and places, which tinyexr would trust.
#include "tools/pxl/formats/exr/exr_layout.h"

#include <gmock/gmock.h>

#include <cstring>
#include <sstream>
#include <string>

#include "tests/tools/support/exr_maker.h"
#include "tools/pxl/formats/exr/exr_reader.h"
#include "tools/pxl/formats/exr/exr_writer.h"
#include "tools/pxl/system/failure.h"

namespace {

constexpr int kWidth = 9;
constexpr int kHeight = 5;

std::string FileOf(Imf::Compression compression, bool tiled = false) {
  ExrRecipe recipe;
  recipe.display = {{0, 0}, {kWidth - 1, kHeight - 1}};
  recipe.compression = compression;
  recipe.tiled = tiled;
  recipe.value = [](int x, int y, const std::string&) { return static_cast<float>(x + y); };
  return MakeExr(recipe);
}

std::string ReasonAgainst(const std::string& file) {
  std::istringstream stream(file);
  try {
    pxl::ReadPicture(*pxl::OpenExr(stream));
  } catch (const pxl::Failure& failure) {
    return failure.what();
  }
  return "";
}

// The whole attribute: its name, its kind, its size and its value.
std::string AttributeIn(const std::string& file, const std::string& name, std::size_t size) {
  const std::size_t kind = file.find(name + '\0') + name.size() + 1;
  const std::size_t end = file.find('\0', kind) + 1 + 4 + size;
  return file.substr(kind - name.size() - 1, end - kind + name.size() + 1);
}

std::string Replaced(std::string file, const std::string& old, const std::string& with) {
  return file.replace(file.find(old), old.size(), with);
}

// The attribute with one more byte in its value.
std::string Longer(std::string attribute, std::size_t size) {
  ++attribute.at(attribute.size() - size - 4);
  return attribute + '\0';
}

template <typename Number>
Number NumberIn(const std::string& file, std::size_t place) {
  Number number{};
  std::memcpy(&number, file.data() + place, sizeof number);
  return number;
}

template <typename Number>
std::string WithNumber(std::string file, std::size_t place, Number number) {
  std::memcpy(file.data() + place, &number, sizeof number);
  return file;
}

// The offset of the first chunk, from the table of chunks.
std::size_t FirstChunk(const std::string& file) {
  return NumberIn<std::uint64_t>(file, pxl::CheckExrHeader(file));
}

}  // namespace

TEST(ExrLayout, OfASoundFileIsTaken) {
  for (const bool tiled : {false, true}) {
    EXPECT_EQ(ReasonAgainst(FileOf(Imf::NO_COMPRESSION, tiled)), "");
    EXPECT_EQ(ReasonAgainst(FileOf(Imf::RLE_COMPRESSION, tiled)), "");
  }
}

TEST(ExrLayout, HasAttributesOfTheSizeOfTheirKind) {
  const std::string file = FileOf(Imf::ZIP_COMPRESSION, true);
  const std::pair<std::string, std::size_t> attributes[] = {
      {"compression", 1}, {"dataWindow", 16}, {"lineOrder", 1}, {"tiles", 9}};
  for (const auto& [name, size] : attributes) {
    const std::string attribute = AttributeIn(file, name, size);
    EXPECT_EQ(ReasonAgainst(Replaced(file, attribute, Longer(attribute, size))),
              "damaged OpenEXR: an attribute of an impossible size")
        << name;
  }
}

TEST(ExrLayout, HasEachAttributeOnce) {
  const std::string file = FileOf(Imf::ZIP_COMPRESSION);
  const std::string attribute = AttributeIn(file, "lineOrder", 1);
  EXPECT_EQ(ReasonAgainst(Replaced(file, attribute, attribute + attribute)),
            "damaged OpenEXR: an attribute that occurs twice");
}

TEST(ExrLayout, HasTheHeaderInTheFile) {
  const std::string file = FileOf(Imf::ZIP_COMPRESSION);
  for (std::size_t size = 8; size < pxl::CheckExrHeader(file); ++size) {
    EXPECT_THROW(pxl::CheckExrHeader(file.substr(0, size)), pxl::Failure) << size;
  }
}

TEST(ExrLayout, HasEveryChunkInTheTable) {
  for (const bool tiled : {false, true}) {
    const std::string file = FileOf(Imf::ZIPS_COMPRESSION, tiled);
    const std::size_t table = pxl::CheckExrHeader(file);
    EXPECT_EQ(ReasonAgainst(WithNumber(file, table, std::uint64_t{0})),
              "damaged OpenEXR: the file is incomplete");
    EXPECT_EQ(ReasonAgainst(WithNumber(file, table, std::uint64_t{file.size()})),
              "damaged OpenEXR: the file is incomplete");
    EXPECT_EQ(ReasonAgainst(WithNumber(file, table, std::uint64_t{file.size() - 1})),
              "damaged OpenEXR: the file ends too early");
  }
}

TEST(ExrLayout, HasRowsInTheirPlace) {
  const std::string file = FileOf(Imf::NO_COMPRESSION);
  for (const std::int32_t y : {-1, 1, kHeight}) {
    EXPECT_EQ(ReasonAgainst(WithNumber(file, FirstChunk(file), y)),
              "damaged OpenEXR: a row outside of its place");
  }
}

TEST(ExrLayout, HasTilesInThePicture) {
  const std::string file = FileOf(Imf::NO_COMPRESSION, true);
  for (std::size_t number = 0; number < 4; ++number) {
    for (const std::int32_t value : {-1, 1000}) {
      EXPECT_EQ(ReasonAgainst(WithNumber(file, FirstChunk(file) + 4 * number, value)),
                "damaged OpenEXR: a tile outside of the picture");
    }
  }
}

TEST(ExrLayout, HasAllBytesOfPixelsThatAreNotCompressed) {
  for (const bool tiled : {false, true}) {
    const std::string file = FileOf(Imf::NO_COMPRESSION, tiled);
    const std::size_t place = FirstChunk(file) + (tiled ? 16 : 4);
    const auto size = NumberIn<std::int32_t>(file, place);
    EXPECT_EQ(ReasonAgainst(WithNumber(file, place, size - 1)),
              "damaged OpenEXR: pixels of an impossible size");
  }
}

TEST(ExrLayout, HasNoMoreCompressedBytesThanPixels) {
  const std::string file = FileOf(Imf::RLE_COMPRESSION);
  const std::size_t place = FirstChunk(file) + 4;
  constexpr std::int32_t kPixels = kWidth * 3 * 4;
  EXPECT_EQ(ReasonAgainst(WithNumber(file, place, kPixels + 1)),
            "damaged OpenEXR: pixels of an impossible size");
  for (const std::int32_t size : {-1, 0, 0x7FFFFFFF}) {
    EXPECT_EQ(ReasonAgainst(WithNumber(file, place, size)),
              "damaged OpenEXR: the file ends too early");
  }
}
