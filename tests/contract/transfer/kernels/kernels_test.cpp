// The kernels: every value, length and alignment.
#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>

#include "tests/support/module/contract.h"
#include "tests/support/oracle/channel_oracle.h"
#include "transfer/kernels/conversion_tables.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/plain_rows.h"

using ::testing::ElementsAre;

namespace {

constexpr unsigned char kGuard = 0x5C;

// Runs a kernel over channels between guard bytes, one channel off the vectors'
// alignment on either side, and returns its output.
template <typename From, typename To>
std::vector<To> Transferred(PXLp_RowKernel kernel, const std::vector<From>& channels) {
  constexpr std::size_t kMargin = 64;
  std::vector<unsigned char> source(2 * kMargin + (channels.size() + 1) * sizeof(From), kGuard);
  std::vector<unsigned char> target(2 * kMargin + (channels.size() + 1) * sizeof(To), kGuard);
  unsigned char* from = source.data() + kMargin + sizeof(From);
  unsigned char* to = target.data() + kMargin + sizeof(To);
  std::copy_n(reinterpret_cast<const unsigned char*>(channels.data()),
              channels.size() * sizeof(From), from);
  const auto sourceBefore = source;

  kernel(from, to, channels.size());

  EXPECT_EQ(source, sourceBefore);
  std::vector<To> result(channels.size());
  std::copy_n(to, result.size() * sizeof(To), reinterpret_cast<unsigned char*>(result.data()));
  std::memset(to, kGuard, result.size() * sizeof(To));
  EXPECT_THAT(target, ::testing::Each(kGuard)) << "written outside the row";
  return result;
}

class RowKernels : public Contract {
 protected:
  RowKernels() { BeBorn(); }
};

std::vector<std::uint16_t> All16() {
  std::vector<std::uint16_t> all(65536);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint16_t>(i);
  return all;
}

std::vector<std::uint8_t> All8() {
  std::vector<std::uint8_t> all(256);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
  return all;
}

}  // namespace

TEST_F(RowKernels, Narrow16BitsExactlyForEveryValue) {
  const auto source = All16();
  const auto result = Transferred<std::uint16_t, std::uint8_t>(PXLp_ConvertRow16to8, source);
  for (std::size_t i = 0; i < source.size(); ++i) {
    ASSERT_EQ(result[i], oracle::From16To8(source[i])) << source[i];
  }
}

TEST_F(RowKernels, Widen8BitsTo16ExactlyForEveryValue) {
  const auto source = All8();
  const auto result = Transferred<std::uint8_t, std::uint16_t>(PXLp_ConvertRow8to16, source);
  for (std::size_t i = 0; i < source.size(); ++i) {
    ASSERT_EQ(result[i], oracle::From8To16(source[i])) << i;
  }
}

TEST_F(RowKernels, Widen8BitsToFloatExactlyForEveryValue) {
  const auto source = All8();
  const auto result = Transferred<std::uint8_t, float>(PXLp_ConvertRow8toF, source);
  for (std::size_t i = 0; i < source.size(); ++i) {
    ASSERT_EQ(std::bit_cast<std::uint32_t>(result[i]), oracle::ChannelFrom8(source[i])) << i;
  }
}

TEST_F(RowKernels, ReadTheTablesAsTheyStand) {
  PXLp_table8to16[3] = 1234;
  PXLp_table8toF[3] = 56.5F;
  EXPECT_THAT((Transferred<std::uint8_t, std::uint16_t>(PXLp_ConvertRow8to16, {3})),
              ElementsAre(1234));
  EXPECT_THAT((Transferred<std::uint8_t, float>(PXLp_ConvertRow8toF, {3})), ElementsAre(56.5F));
}

TEST_F(RowKernels, TruncateFloatsWherePixelsAreRounded) {
  const float infinite = std::numeric_limits<float>::infinity();
  const float notANumber = std::numeric_limits<float>::quiet_NaN();
  EXPECT_THAT(
      (Transferred<float, std::uint8_t>(
          PXLp_ConvertRowFto8, {0.5F, 1.0F, 0.999999F, 2.0F, infinite, -infinite, notANumber,
                                -notANumber, -0.0F, -0.3F, -1e-45F, 1e-45F, 0.7F})),
      ElementsAre(127, 255, 254, 255, 255, 0, 0, 0, 0, 0, 0, 0, 178));
}

TEST_F(RowKernels, TruncateFloatsExactlyAroundEveryThreshold) {
  std::vector<float> source;
  for (std::uint32_t n = 0; n <= 256; ++n) {
    const auto middle = std::bit_cast<std::uint32_t>(static_cast<float>(n) / 255.0F);
    for (std::uint32_t d = 0; d < 9; ++d) {
      source.push_back(std::bit_cast<float>(n == 0 ? d : middle - 4 + d));
    }
  }
  const auto result = Transferred<float, std::uint8_t>(PXLp_ConvertRowFto8, source);
  for (std::size_t i = 0; i < source.size(); ++i) {
    ASSERT_EQ(result[i], oracle::RowFto8(std::bit_cast<std::uint32_t>(source[i]))) << source[i];
  }
}

TEST_F(RowKernels, TruncateFloatsExactlyAllOverTheirBits) {
  std::vector<float> source;
  for (std::uint64_t bits = 0; bits < (std::uint64_t{1} << 32); bits += 65521) {
    source.push_back(std::bit_cast<float>(static_cast<std::uint32_t>(bits)));
  }
  const auto result = Transferred<float, std::uint8_t>(PXLp_ConvertRowFto8, source);
  for (std::size_t i = 0; i < source.size(); ++i) {
    const auto bits = std::bit_cast<std::uint32_t>(source[i]);
    ASSERT_EQ(result[i], oracle::RowFto8(bits)) << std::hex << bits;
  }
}

TEST_F(RowKernels, WriteExactlyTheRowAtEveryLength) {
  for (std::size_t channels = 0; channels <= 200; ++channels) {
    std::vector<std::uint8_t> eight(channels);
    std::vector<std::uint16_t> sixteen(channels);
    std::vector<float> real(channels);
    for (std::size_t i = 0; i < channels; ++i) {
      eight[i] = static_cast<std::uint8_t>(i * 37);
      sixteen[i] = static_cast<std::uint16_t>(i * 4099);
      real[i] = static_cast<float>(i) / 150.0F - 0.1F;
    }
    const auto eightTo16 = Transferred<std::uint8_t, std::uint16_t>(PXLp_ConvertRow8to16, eight);
    const auto eightToF = Transferred<std::uint8_t, float>(PXLp_ConvertRow8toF, eight);
    const auto sixteenTo8 = Transferred<std::uint16_t, std::uint8_t>(PXLp_ConvertRow16to8, sixteen);
    const auto realTo8 = Transferred<float, std::uint8_t>(PXLp_ConvertRowFto8, real);
    for (std::size_t i = 0; i < channels; ++i) {
      ASSERT_EQ(eightTo16[i], oracle::From8To16(eight[i]));
      ASSERT_EQ(std::bit_cast<std::uint32_t>(eightToF[i]), oracle::ChannelFrom8(eight[i]));
      ASSERT_EQ(sixteenTo8[i], oracle::From16To8(sixteen[i]));
      ASSERT_EQ(realTo8[i], oracle::RowFto8(std::bit_cast<std::uint32_t>(real[i])));
    }
  }
}
