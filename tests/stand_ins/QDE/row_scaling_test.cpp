// Scaling of rows at each level against the plain loops, and the memory that it reads
// and writes.
#include "host/QDE/rows/row_scaling.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "simd/processor_level.h"
#include "tests/stand_ins/QDE/fenced_bytes.h"

namespace {

using qde::ScalingRoutines;
using simd::Level;

constexpr std::size_t kMost = 4 * 32 + 3;
constexpr std::uint8_t kUntouched = 0xA5;

class RowScaling : public testing::TestWithParam<Level> {
 protected:
  RowScaling() {
    if (GetParam() > simd::ProcessorLevel()) return;
    routines_ = &qde::ScalingRoutinesOf(GetParam());
  }
  void SetUp() override {
    if (routines_ == nullptr) GTEST_SKIP() << "not on this processor";
  }

  // Scales `read` pixels, which end where memory ends, to `count` ones, which
  // begin anywhere; compares them with those that `position` names.
  template <typename Scale, typename Position>
  void Check(std::size_t read, std::size_t count, Scale scale, Position position) {
    FencedBytes source(read * 4);
    for (std::size_t i = 0; i < read * 4; ++i) {
      source.begin()[i] = static_cast<std::uint8_t>(generator_());
    }
    const std::size_t margin = 64 + generator_() % 64;
    std::vector<std::uint8_t> memory(margin + count * 4 + 64, kUntouched);
    std::vector<std::uint8_t> expected = memory;
    for (std::size_t i = 0; i < count; ++i) {
      std::memcpy(&expected[margin + 4 * i], source.begin() + 4 * position(i), 4);
    }
    scale(source.begin(), &memory[margin]);
    ASSERT_EQ(memory, expected) << count << " pixels";
  }

  const ScalingRoutines* routines_ = nullptr;
  std::mt19937 generator_{20261122};
};

TEST_P(RowScaling, HalvesWithoutReadingPastTheLastPixelShown) {
  for (std::size_t count = 1; count <= kMost && !HasFatalFailure(); ++count) {
    Check(
        2 * count - 1, count,
        [&](const std::uint8_t* from, std::uint8_t* to) { routines_->halve(from, to, count); },
        [](std::size_t i) { return 2 * i; });
  }
}

TEST_P(RowScaling, ShowsEveryPixelTwice) {
  for (std::size_t count = 0; count <= kMost && !HasFatalFailure(); ++count) {
    Check((count + 1) / 2, count,
          [&](const std::uint8_t* from, std::uint8_t* to) { routines_->twice(from, to, count); },
          [](std::size_t i) { return i / 2; });
  }
}

TEST_P(RowScaling, GathersAnyPixels) {
  for (std::size_t count = 0; count <= kMost && !HasFatalFailure(); ++count) {
    constexpr std::size_t kRead = 5000;
    std::vector<std::uint32_t> positions(count);
    for (std::uint32_t& position : positions)
      position = static_cast<std::uint32_t>(generator_() % kRead);
    if (count > 0) positions.back() = kRead - 1;
    Check(
        kRead, count,
        [&](const std::uint8_t* from, std::uint8_t* to) {
          routines_->gather(from, positions.data(), to, count);
        },
        [&](std::size_t i) { return positions[i]; });
  }
}

INSTANTIATE_TEST_SUITE_P(Levels, RowScaling, testing::ValuesIn(simd::kAllLevels),
                         [](const auto& level) { return "Level" + std::to_string(level.index); });

}  // namespace
