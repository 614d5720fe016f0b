// The blit with the kernels of every level that this processor has.
#include <cstdlib>

#include "simd/streaming.h"
#include "tests/contract/transfer/image.h"
#include "tests/support/module/levels.h"
#include "transfer/deep_blit.h"
#include "transfer/kernels/Kernels.h"

namespace {

struct Pair {
  std::int32_t from;
  std::int32_t to;
};
constexpr Pair kPairs[] = {{128, 128}, {128, 32}, {64, 64}, {64, 32},
                           {32, 64},   {32, 128}, {32, 32}};

std::size_t ChannelBytes(std::int32_t depth) {
  return static_cast<std::size_t>(depth / 32);
}

// A row as the plain loops convert it.
Bytes PlainRow(const unsigned char* row, std::size_t channels, Pair pair) {
  Bytes result(channels * ChannelBytes(pair.to));
  if (pair.from == pair.to) std::memcpy(result.data(), row, result.size());
  if (pair.from == 128 && pair.to == 32) PXLp_RowFto8(row, result.data(), channels);
  if (pair.from == 64 && pair.to == 32) PXLp_Row16to8(row, result.data(), channels);
  if (pair.from == 32 && pair.to == 64) PXLp_Row8to16(row, result.data(), channels);
  if (pair.from == 32 && pair.to == 128) PXLp_Row8toF(row, result.data(), channels);
  return result;
}

// Where an Image lies; all of it in channels.
struct Layout {
  std::size_t padding = 0;
  std::size_t offset = 0;
  bool upsideDown = false;
};
constexpr Layout kLayouts[] = {{},
                               {.padding = 3, .offset = 1},
                               {.padding = 5, .offset = 2, .upsideDown = true},
                               {.padding = 16, .offset = 15, .upsideDown = true}};

std::int32_t PaddingOf(const Layout& layout, std::int32_t depth) {
  return static_cast<std::int32_t>(layout.padding * ChannelBytes(depth));
}

struct Size {
  int width;
  int height;
};

// A blit between two images, compared with the plain loops; all of the memory is.
void ExpectPlainRows(Pair pair, Size size, const Layout& from, const Layout& to) {
  BareWorld sourceWorld(pair.from, size.width, size.height);
  BareWorld destinationWorld(pair.to, size.width, size.height);
  Image source(sourceWorld.Handle(), PaddingOf(from, pair.from), from.upsideDown,
               from.offset * ChannelBytes(pair.from));
  Image destination(destinationWorld.Handle(), PaddingOf(to, pair.to), to.upsideDown,
                    to.offset * ChannelBytes(pair.to));
  pair.from == 128 ? source.FillWithFloats() : source.Fill();
  const Bytes sourceBefore = source.memory;
  const std::size_t channels = 4 * static_cast<std::size_t>(size.width);
  const Bytes expected =
      destination.With([&](std::size_t y) { return PlainRow(source.Row(y), channels, pair); });

  EXPECT_EQ(PXLp_Blit64(sourceWorld.Handle(), destinationWorld.Handle()), PXL_Err_NONE);

  // Not EXPECT_EQ, which would print megabytes.
  EXPECT_TRUE(destination.memory == expected)
      << pair.from << " to " << pair.to << ", " << size.width << " x " << size.height;
  EXPECT_TRUE(source.memory == sourceBefore);
}

// A blit between two Worlds of one depth in one memory, the destination `shift`
// pixels behind the source; rows are moved one by one from the top.
void ExpectRowsMoved(std::int32_t depth, Size size, std::ptrdiff_t shift) {
  BareWorld sourceWorld(depth, size.width, size.height);
  BareWorld destinationWorld(depth, size.width, size.height);
  const std::size_t pixel = static_cast<std::size_t>(depth) / 8;
  const std::size_t row = static_cast<std::size_t>(size.width) * pixel;
  const std::ptrdiff_t distance = shift * static_cast<std::ptrdiff_t>(pixel);
  const auto room = static_cast<std::size_t>(std::abs(distance));
  Bytes memory(row * static_cast<std::size_t>(size.height) + 2 * room);
  std::uint32_t state = 1;
  for (unsigned char& byte : memory) {
    byte = static_cast<unsigned char>((state = state * 1664525 + 1013904223) >> 24);
  }
  Bytes expected = memory;
  for (std::size_t y = 0; y < static_cast<std::size_t>(size.height); ++y) {
    unsigned char* from = &expected[room + y * row];
    std::memmove(from + distance, from, row);
  }
  PXL_World& source = *RecordOf(sourceWorld.Handle());
  PXL_World& destination = *RecordOf(destinationWorld.Handle());
  source.pixels.baseAddr = &memory[room];
  destination.pixels.baseAddr = &memory[room] + distance;
  source.pixels.rowBytes = destination.pixels.rowBytes = static_cast<std::int32_t>(row);

  EXPECT_EQ(PXLp_Blit64(sourceWorld.Handle(), destinationWorld.Handle()), PXL_Err_NONE);

  EXPECT_TRUE(memory == expected) << depth << " bits, " << size.width << " x " << size.height
                                  << ", moved by " << shift;
}

class BlitOfLevel : public EachLevel {
 protected:
  void SetUp() override {
    EachLevel::SetUp();
    if (!IsSkipped()) PXLp_kernels = PXLp_KernelsOf(GetParam());
  }
};

INSTANTIATE_TEST_SUITE_P(Processor, BlitOfLevel, ::testing::ValuesIn(simd::ALL_LEVELS), LevelName);

// So wide, and as high as it takes to be streamed.
Size TooLargeForTheCaches(Pair pair, int width) {
  int height = 1;
  const auto bytes = [&](std::int32_t depth) {
    return static_cast<std::size_t>(depth / 8 * width) * static_cast<std::size_t>(height);
  };
  while (simd::StoresFor(bytes(pair.from), bytes(pair.to)) == simd::Stores::Caching) ++height;
  return {width, height};
}

}  // namespace

TEST_P(BlitOfLevel, ConvertsRowsOfEveryWidthAndNothingAround) {
  for (const Pair pair : kPairs) {
    for (const int width : {1, 2, 3, 5, 8, 17, 33, 64, 129}) {
      for (const int height : {0, 1, 3}) {
        for (const Layout& from : kLayouts) {
          for (const Layout& to : kLayouts) ExpectPlainRows(pair, {width, height}, from, to);
        }
      }
    }
  }
}

TEST_P(BlitOfLevel, ConvertsWhatExceedsTheCaches) {
  for (const Pair pair : kPairs) {
    for (const int width : {129, 1025}) {
      const Size size = TooLargeForTheCaches(pair, width);
      ExpectPlainRows(pair, size, kLayouts[0], kLayouts[1]);
      ExpectPlainRows(pair, size, kLayouts[2], kLayouts[3]);
    }
  }
}

TEST_P(BlitOfLevel, MovesRowsOneByOneWhereWorldsOverlap) {
  for (const std::int32_t depth : {64, 128}) {
    for (const int width : {1, 3, 17, 33, 129}) {
      for (const std::ptrdiff_t pixels : {0, 1, 2, 3, 5}) {
        for (const std::ptrdiff_t rows : {0, 1, 2}) {
          ExpectRowsMoved(depth, {width, 5}, rows * width + pixels);
          ExpectRowsMoved(depth, {width, 5}, -(rows * width + pixels));
        }
      }
    }
  }
}

TEST_P(BlitOfLevel, MovesRowsOneByOneWhereLargeWorldsOverlap) {
  for (const std::int32_t depth : {64, 128}) {
    const Size size = TooLargeForTheCaches({depth, depth}, 1025);
    for (const std::ptrdiff_t shift : {1, 7, 1024, 1025, 1026, 3000}) {
      ExpectRowsMoved(depth, size, shift);
      ExpectRowsMoved(depth, size, -shift);
    }
  }
}

// Rows longer than any vector find the tables as they are: all zeros.
TEST_F(BornModule, BlitsZerosBeforeTheFirstBirthHoweverWideTheRows) {
  UnloadModule();
  for (const std::int32_t depth : {64, 128}) {
    for (const Size size : {Size{129, 3}, TooLargeForTheCaches({32, depth}, 1025)}) {
      BareWorld sourceWorld(32, size.width, size.height);
      BareWorld destinationWorld(depth, size.width, size.height);
      Image source(sourceWorld.Handle(), 0);
      Image destination(destinationWorld.Handle(), 0);
      source.Fill();
      const Bytes expected =
          destination.With([&](std::size_t) { return Bytes(destination.RowSize()); });
      EXPECT_EQ(PXLp_Blit64(sourceWorld.Handle(), destinationWorld.Handle()), PXL_Err_NONE);
      EXPECT_TRUE(destination.memory == expected) << depth << " bits, " << size.width;
    }
  }
}
