// Indices and colours at each level against plain loops.
#include "host/QDE/rows/row_colors.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "host/QDE/pixels/pixel.h"
#include "simd/processor_level.h"
#include "tests/stand_ins/QDE/fenced_bytes.h"

namespace {

using qde::Color;
using qde::ColorRoutines;
using simd::Level;

constexpr std::size_t kMost = 4 * 64 + 3;
constexpr std::uint8_t kUntouched = 0xA5;
constexpr std::size_t kColors = std::size_t{1} << 24;

TEST(Places, AreOneForEachColor) {
  std::vector<bool> taken(kColors);
  for (std::uint32_t color = 0; color < kColors; ++color) {
    const std::uint32_t place =
        qde::PlaceOf({static_cast<std::uint8_t>(color >> 16), static_cast<std::uint8_t>(color >> 8),
                      static_cast<std::uint8_t>(color)});
    ASSERT_LT(place, kColors);
    ASSERT_FALSE(taken[place]);
    taken[place] = true;
  }
}

class RowColors : public testing::TestWithParam<Level> {
 protected:
  RowColors() {
    if (GetParam() > simd::ProcessorLevel()) return;
    routines_ = &qde::ColorRoutinesOf(GetParam());
  }
  void SetUp() override {
    if (routines_ == nullptr) GTEST_SKIP() << "not on this processor";
  }

  std::uint8_t Byte() { return static_cast<std::uint8_t>(generator_()); }

  const ColorRoutines* routines_ = nullptr;
  std::mt19937 generator_{20261122};
};

TEST_P(RowColors, FindTheByteOfEachColorInBothFormats) {
  constexpr std::size_t kReadBeyond = 3;
  FencedBytes bytes(kColors + kReadBeyond);
  for (std::size_t i = 0; i < kColors; ++i) bytes.begin()[i] = Byte();
  const qde::NearestTable table = {bytes.begin(), 0x5C};
  for (const qde::Format format : {qde::kARGB, qde::kBGRA}) {
    for (std::size_t count = 0; count <= kMost; ++count) {
      FencedBytes pixels(count * 4);
      const std::size_t margin = 64 + Byte() % 64U;
      std::vector<std::uint8_t> memory(margin + count + 64, kUntouched);
      std::vector<std::uint8_t> expected = memory;
      for (std::size_t i = 0; i < count; ++i) {
        // White is last: the bytes after its own must not affect the result.
        const bool last = i + 1 == count;
        const Color color = last ? qde::kWhite : Color{Byte(), Byte(), Byte()};
        const qde::Pixel32 pixel = ToPixel(color, format, Byte());
        std::memcpy(pixels.begin() + 4 * i, pixel.data(), 4);
        expected[margin + i] = bytes.begin()[qde::PlaceOf(color)] ^ 0x5C;
      }
      routines_->find(table, format, pixels.begin(), &memory[margin], count);
      ASSERT_EQ(memory, expected) << count << " pixels, format " << format;
    }
  }
}

TEST_P(RowColors, ShowThePixelsOfIndices) {
  FencedBytes table(256 * 4);
  for (std::size_t i = 0; i < 256 * 4; ++i) table.begin()[i] = Byte();
  for (std::size_t count = 0; count <= kMost; ++count) {
    FencedBytes indices(count);
    const std::size_t margin = 64 + Byte() % 64U;
    std::vector<std::uint8_t> memory(margin + count * 4 + 64, kUntouched);
    std::vector<std::uint8_t> expected = memory;
    for (std::size_t i = 0; i < count; ++i) {
      indices.begin()[i] = i == 0 ? 0xFF : Byte();
      std::memcpy(&expected[margin + 4 * i], table.begin() + 4 * indices.begin()[i], 4);
    }
    routines_->show(table.begin(), indices.begin(), &memory[margin], count);
    ASSERT_EQ(memory, expected) << count << " pixels";
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, RowColors, testing::ValuesIn(simd::kAllLevels),
                         [](const auto& level) { return "Level" + std::to_string(level.index); });

}  // namespace
