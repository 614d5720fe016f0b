// Single pixels are converted anywhere at any time, before the module's birth
// and after its death as well.
#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "PXL.h"
#include "tests/support/host/crew.h"

namespace {

struct Converted {
  PXL_Pixel8 fromFloatTo8;
  PXL_Pixel16 fromFloatTo16;
  PXL_PixelF clipped;
  PXL_PixelF from16ToFloat;
  PXL_Pixel8 from16To8;
  PXL_PixelF from8ToFloat;
  PXL_Pixel16 from8To16;
};

Converted ConvertAll(int value) {
  const auto number = static_cast<float>(value) / 256.0F;
  const PXL_PixelF pixel = {{number, -number, 1.0F - number, 2.0F * number}};
  Converted result{};
  PXL_PixelFto8(&pixel, &result.fromFloatTo8);
  PXL_PixelFto16(&pixel, &result.fromFloatTo16);
  result.clipped = pixel;
  PXL_ClipPixelF(&result.clipped);
  PXL_Pixel16toF(&result.fromFloatTo16, &result.from16ToFloat);
  PXL_Pixel16to8(&result.fromFloatTo16, &result.from16To8);
  PXL_Pixel8toF(&result.fromFloatTo8, &result.from8ToFloat);
  PXL_Pixel8to16(&result.fromFloatTo8, &result.from8To16);
  return result;
}

constexpr int kValues = 400;

std::vector<Converted> ConvertedAlone() {
  std::vector<Converted> results;
  for (int value = 0; value < kValues; ++value) results.push_back(ConvertAll(value));
  return results;
}

// How many values were converted as on a single thread.
int CountEqual(const std::vector<Converted>& expected) {
  int equal = 0;
  for (int value = 0; value < kValues; ++value) {
    const Converted result = ConvertAll(value);
    const auto place = static_cast<std::size_t>(value);
    equal += std::memcmp(&result, &expected[place], sizeof result) == 0 ? 1 : 0;
  }
  return equal;
}

}  // namespace

TEST(SinglePixels, AreConvertedOnAllThreadsAtOnce) {
  const std::vector<Converted> expected = ConvertedAlone();
  RunCrew([&](int) { EXPECT_EQ(CountEqual(expected), kValues); });
}

TEST(SinglePixels, AreConvertedWhileTheModuleIsBornAndDies) {
  const std::vector<Converted> expected = ConvertedAlone();
  std::atomic<int> births = 0;
  {
    const Meddler lives([&](unsigned) {
      PXL_Birth(0);
      PXL_Death();
      ++births;
    });
    for (int round = 0; round < 50 || births == 0; ++round) {
      RunCrew([&](int) { EXPECT_EQ(CountEqual(expected), kValues); });
    }
  }
  EXPECT_GT(births, 0);
}
