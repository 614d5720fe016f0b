// Blits pictures with all values between Worlds, and compares with the plain loops.
#include "tools/pxl/commands/selftest/shipped_blit.h"

#include <cstring>
#include <string>

#include "PXL.h"
#include "tools/proof/difference.h"
#include "tools/proof/digest.h"
#include "tools/proof/inputs.h"
#include "tools/pxl/module/world.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/plain_rows.h"

namespace pxl {
namespace {

using proof::Bytes;

constexpr std::size_t kChannels = 4;

struct Size {
  std::int64_t width;
  std::int64_t height;
};

// The smaller has more than 65536 channels.
constexpr Size kSizes[] = {{129, 131}, {1025, 1027}};

struct Pair {
  std::int32_t from;
  std::int32_t to;
  PXLp_RowKernel plain;
};

template <std::size_t channelBytes>
void PlainCopy(const void* source, void* destination, std::size_t channels) {
  std::memcpy(destination, source, channels * channelBytes);
}

constexpr Pair kPairs[] = {
    {32, 64, PXLp_ConvertRow8to16}, {32, 128, PXLp_ConvertRow8toF}, {64, 32, PXLp_ConvertRow16to8},
    {64, 64, PlainCopy<2>},         {128, 32, PXLp_ConvertRowFto8}, {128, 128, PlainCopy<4>},
};
static_assert(std::size(kPairs) * std::size(kSizes) == kShippedBlits);

std::size_t RowChannels(Size size) {
  return static_cast<std::size_t>(size.width) * kChannels;
}

std::size_t ChannelBytes(std::int32_t depth) {
  return static_cast<std::size_t>(depth) / 8 / kChannels;
}

// The channels of a picture: all values, or the deciding floats, and then the inputs
// of the proof of the conversions.
Bytes PictureOf(std::int32_t depth, Size size) {
  const std::size_t channels = RowChannels(size) * static_cast<std::size_t>(size.height);
  const proof::Side side = {ChannelBytes(depth), ChannelBytes(depth)};
  const proof::Subject subject = {{}, "", proof::Kind::Conversion, {}, {}, side, {1, 1}};
  Bytes picture = proof::ValuesFor(subject);
  const Bytes rest = proof::SourceFor(subject, channels - picture.size() / side.elementBytes);
  picture.insert(picture.end(), rest.begin(), rest.end());
  return picture;
}

// Blits the picture; returns the rows of the result without padding.
Bytes Blitted(const Bytes& picture, const Pair& pair, Size size) {
  Module module;
  const World source(module, pair.from, size.width, size.height);
  const World destination(module, pair.to, size.width, size.height);
  const PixelLock sourceLock(source);
  const PixelLock destinationLock(destination);
  const std::size_t sourceRow = RowChannels(size) * ChannelBytes(pair.from);
  for (std::int64_t y = 0; y < size.height; ++y) {
    std::memcpy(sourceLock.Rows().Row(y), &picture[static_cast<std::size_t>(y) * sourceRow],
                sourceRow);
  }
  module.Check(PXL_Blit(source.handle(), destination.handle(), nullptr, nullptr, 0));
  const std::size_t row = RowChannels(size) * ChannelBytes(pair.to);
  Bytes result(row * static_cast<std::size_t>(size.height));
  for (std::int64_t y = 0; y < size.height; ++y) {
    std::memcpy(&result[static_cast<std::size_t>(y) * row], destinationLock.Rows().Row(y), row);
  }
  return result;
}

proof::Finding Compare(const Bytes& picture, const Bytes& result, const Pair& pair, Size size) {
  Bytes expected(result.size());
  pair.plain(picture.data(), expected.data(), picture.size() / ChannelBytes(pair.from));
  const auto difference = proof::FirstDifference(result.data(), expected.data(), result.size());
  if (!difference) return std::nullopt;
  const std::size_t channel = difference->place / ChannelBytes(pair.to);
  return std::to_string(pair.from) + " to " + std::to_string(pair.to) + " bits, " +
         std::to_string(size.width) + " x " + std::to_string(size.height) + " pixels: channel " +
         std::to_string(channel % RowChannels(size)) + " of row " +
         std::to_string(channel / RowChannels(size)) + " " + proof::TextOf(*difference);
}

}  // namespace

proof::Verdict ProveShippedBlit(const std::function<void()>& step) {
  proof::Verdict verdict;
  verdict.name = "libPXL";
  proof::Digest digest;
  for (const Size& size : kSizes) {
    for (const Pair& pair : kPairs) {
      const Bytes picture = PictureOf(pair.from, size);
      const Bytes result = Blitted(picture, pair, size);
      digest.Add(result.data(), result.size());
      if (!verdict.difference) verdict.difference = Compare(picture, result, pair, size);
      step();
    }
  }
  verdict.digest = digest.Text();
  return verdict;
}

}  // namespace pxl
