// The arithmetic of the conversions for vectors of any width. Only for the files of
// one level: see the headers of the vectors in simd/. vector_factors.h explains why
// the results are exact.
//
// A step makes one vector of the destination. It names its Vector, the channels'
// types Source and Destination, and kPlain, the loop that it equals.
#ifndef TRANSFER_KERNELS_VECTOR_STEPS_H
#define TRANSFER_KERNELS_VECTOR_STEPS_H

#include <cstddef>
#include <cstdint>

#include "transfer/kernels/plain_rows.h"
#include "transfer/kernels/vector_factors.h"

template <typename V>
struct PXLp_Convert8to16 {
  using Vector = V;
  using Source = std::uint8_t;
  using Destination = std::uint16_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8to16;

  static typename V::Type Convert(const Source* from) {
    const auto c = V::LoadBytesAs16(from);
    const auto fraction = V::MultiplyRounded16(c, V::Spread16(PXLp_kFraction8to16));
    return V::Add16(V::template ShiftLeft16<7>(c), fraction);
  }
};

// For the levels that have fused products and sums.
template <typename V>
struct PXLp_Convert8toF {
  using Vector = V;
  using Source = std::uint8_t;
  using Destination = float;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow8toF;

  static typename V::Type Convert(const Source* from) {
    const auto c = V::ToFloats(V::LoadBytesAs32(from));
    const auto farther = V::MultiplyFloats(c, V::SpreadFloat(PXLp_kReciprocal255Rest));
    return V::BitsOf(V::MultiplyAddFloats(c, V::SpreadFloat(PXLp_kReciprocal255Nearest), farther));
  }
};

template <typename V>
struct PXLp_Convert16to8 {
  using Vector = V;
  using Source = std::uint16_t;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRow16to8;

  static typename V::Type Convert(const Source* from) {
    constexpr std::size_t kSources = V::kBytes / sizeof(Source);
    return V::PackUnsignedInOrder(Rounded(V::Load(from)), Rounded(V::Load(from + kSources)));
  }

 private:
  static typename V::Type Rounded(typename V::Type v) {
    const auto doubled = V::MultiplyHigh16(v, V::Spread16(PXLp_kFactor16to8));
    return V::And(V::Average16(doubled, V::Spread16(0)), V::Spread16(0xFF));
  }
};

template <typename V>
struct PXLp_ConvertFto8 {
  using Vector = V;
  using Source = float;
  using Destination = std::uint8_t;
  static constexpr PXLp_RowKernel kPlain = PXLp_ConvertRowFto8;

  static typename V::Type Convert(const Source* from) {
    constexpr std::size_t kSources = V::kBytes / sizeof(Source);
    return V::PackUnsignedInOrder(Truncated(from), Truncated(from + kSources),
                                  Truncated(from + 2 * kSources), Truncated(from + 3 * kSources));
  }

 private:
  static typename V::Type Truncated(const Source* from) {
    const auto scale = V::SpreadFloat(255.0F);
    return V::Truncate(V::MinFloats(scale, V::MultiplyFloats(V::LoadFloats(from), scale)));
  }
};

#endif
