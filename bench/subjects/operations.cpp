// The operations as plain loops.
#include "bench/subjects/operations.h"

#include <algorithm>
#include <cstring>

#include "simd/pixels32.h"
#include "transfer/kernels/kernel_set.h"
#include "transfer/kernels/selection.h"

namespace bench {
namespace {

constexpr std::size_t kChannels = 4;

void ConvertRows(PXLp_RowKernel kernel, const Picture& source, const Picture& destination) {
  const std::size_t channels = static_cast<std::size_t>(source.width) * kChannels;
  for (int y = 0; y < source.height; ++y) kernel(source.Row(y), destination.Row(y), channels);
}

std::uint32_t* Words(const Picture& picture, int y) {
  return reinterpret_cast<std::uint32_t*>(picture.Row(y));
}

// The nearest pixel to the upper left.
void ScaleNearest(const Picture& source, const Picture& destination) {
  for (int y = 0; y < destination.height; ++y) {
    const std::uint32_t* from = Words(source, y * source.height / destination.height);
    std::uint32_t* to = Words(destination, y);
    for (int x = 0; x < destination.width; ++x) to[x] = from[x * source.width / destination.width];
  }
}

template <typename Row>
void EachRow(const Picture& picture, Row row) {
  for (int y = 0; y < picture.height; ++y) row(y);
}

}  // namespace

void DoPlainly(Operation operation, const Picture& source, const Picture& destination) {
  const PXLp_KernelSet& plain = PXLp_GetKernels(simd::Level::Baseline);
  const auto words = static_cast<std::size_t>(destination.width);
  switch (operation) {
    case Operation::From8to16:
      return ConvertRows(plain.from8to16.caching, source, destination);
    case Operation::From8toF:
      return ConvertRows(plain.from8toF.caching, source, destination);
    case Operation::From16to8:
      return ConvertRows(plain.from16to8.caching, source, destination);
    case Operation::FromFto8:
      return ConvertRows(plain.fromFto8.caching, source, destination);
    case Operation::Copy:
      return EachRow(source, [&](int y) {
        std::memcpy(destination.Row(y), source.Row(y), source.UsedRowBytes());
      });
    case Operation::Fill:
      return EachRow(destination,
                     [&](int y) { std::fill_n(Words(destination, y), words, kFillWord); });
    case Operation::ReverseBytes:
      return EachRow(destination, [&](int y) { simd::ReverseBytes32(destination.Row(y), words); });
    case Operation::HalveNearest:
    case Operation::DoubleNearest:
      return ScaleNearest(source, destination);
  }
}

}  // namespace bench
