// The hollow kernels for vectors of any width. Only for the files of one level:
// see the headers of the vectors in simd/.
#ifndef BENCH_LIMITS_HOLLOW_H
#define BENCH_LIMITS_HOLLOW_H

#include <cstring>

#include "bench/limits/shapes.h"

namespace bench {

template <typename Vector, bool kStreaming>
inline void Put(std::uint8_t* to, typename Vector::Type lanes) {
  // Prevents the compiler from replacing the loop by a block move or omitting it.
  asm("" : "+v"(lanes));
  if constexpr (kStreaming) {
    Vector::Stream(to, lanes);
  } else {
    Vector::Store(to, lanes);
  }
}

template <typename Vector, std::size_t kLoads>
inline typename Vector::Type Xored(const std::uint8_t* from) {
  typename Vector::Type lanes = Vector::Load(from);
  for (std::size_t i = 1; i < kLoads; ++i) {
    lanes = Vector::Xor(lanes, Vector::Load(from + i * Vector::kBytes));
  }
  return lanes;
}

// One step of the loop; advances both pointers.
template <typename Vector, Shape kShape, bool kStreaming>
inline void Step(std::uint8_t*& to, const std::uint8_t*& from) {
  constexpr std::size_t kStores = kShape == Shape::Widen2 ? 2 : kShape == Shape::Widen4 ? 4 : 1;
  constexpr std::size_t kLoads = kShape == Shape::Narrow2 ? 2 : kShape == Shape::Narrow4 ? 4 : 1;
  typename Vector::Type lanes = Vector::Spread32(0);
  if constexpr (kShape == Shape::InPlace) {
    lanes = Vector::Load(to);
  } else if constexpr (kShape == Shape::Combine) {
    lanes = Vector::Xor(Vector::Load(from), Vector::Load(to));
  } else if constexpr (kShape != Shape::Fill) {
    lanes = Xored<Vector, kLoads>(from);
  }
  for (std::size_t i = 0; i < kStores; ++i) Put<Vector, kStreaming>(to + i * Vector::kBytes, lanes);
  to += kStores * Vector::kBytes;
  from += kLoads * Vector::kBytes;
}

template <typename Vector, Shape kShape>
constexpr std::size_t SourceBytes(std::size_t written) {
  if (kShape == Shape::Widen2) return written / 2;
  if (kShape == Shape::Widen4) return written / 4;
  if (kShape == Shape::Narrow2) return written * 2;
  return kShape == Shape::Narrow4 ? written * 4 : written;
}

// The vectors at the start and the end may be unaligned and overlap their
// neighbours.
template <typename Vector, Shape kShape, bool kStreaming>
void HollowLoop(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes) {
  constexpr std::size_t kStepBytes = kShape == Shape::Widen2
                                         ? 2 * Vector::kBytes
                                         : (kShape == Shape::Widen4 ? 4 : 1) * Vector::kBytes;
  if (bytes < kStepBytes) {
    std::memset(to, 0, bytes);
    return;
  }
  const auto stepAt = [&](std::size_t offset) {
    std::uint8_t* there = to + offset;
    const std::uint8_t* source = from + SourceBytes<Vector, kShape>(offset);
    Step<Vector, kShape, false>(there, source);
  };
  const std::size_t head = -reinterpret_cast<std::uintptr_t>(to) % Vector::kBytes;
  if (head != 0) stepAt(0);
  if ((bytes - head) % kStepBytes != 0) stepAt(bytes - kStepBytes);
  to += head;
  from += SourceBytes<Vector, kShape>(head);
#pragma GCC unroll 4
  for (std::size_t steps = (bytes - head) / kStepBytes; steps != 0; --steps) {
    Step<Vector, kShape, kStreaming>(to, from);
  }
}

template <typename Vector, bool kStreaming>
HollowRow HollowOf(Shape shape) {
  switch (shape) {
    case Shape::Widen2:
      return HollowLoop<Vector, Shape::Widen2, kStreaming>;
    case Shape::Widen4:
      return HollowLoop<Vector, Shape::Widen4, kStreaming>;
    case Shape::Narrow2:
      return HollowLoop<Vector, Shape::Narrow2, kStreaming>;
    case Shape::Narrow4:
      return HollowLoop<Vector, Shape::Narrow4, kStreaming>;
    case Shape::Fill:
      return HollowLoop<Vector, Shape::Fill, kStreaming>;
    case Shape::InPlace:
      return HollowLoop<Vector, Shape::InPlace, kStreaming>;
    case Shape::Combine:
      return HollowLoop<Vector, Shape::Combine, kStreaming>;
    default:
      return HollowLoop<Vector, Shape::Copy, kStreaming>;
  }
}

template <typename Vector>
HollowRow HollowOf(Shape shape, bool streaming) {
  return streaming ? HollowOf<Vector, true>(shape) : HollowOf<Vector, false>(shape);
}

}  // namespace bench

#endif
