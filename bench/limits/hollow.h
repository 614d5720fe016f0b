// The hollow kernels for any width of vector. A file that includes this is
// compiled for one level of processor, and hands in its vectors from an unnamed
// namespace, so that nothing of it is shared with files for other levels.
#ifndef BENCH_LIMITS_HOLLOW_H
#define BENCH_LIMITS_HOLLOW_H

#include <cstring>

#include "bench/limits/shapes.h"

namespace bench {

template <class Vector, bool STREAMING>
inline void Put(std::uint8_t* to, typename Vector::Lanes lanes) {
  // Keeps the compiler from seeing a copy, a fill or nothing at all in the loop.
  asm("" : "+v"(lanes));
  if constexpr (STREAMING) {
    Vector::Stream(to, lanes);
  } else {
    Vector::Store(to, lanes);
  }
}

template <class Vector, int LOADS>
inline typename Vector::Lanes Xored(const std::uint8_t* from) {
  typename Vector::Lanes lanes = Vector::Load(from);
  for (int i = 1; i < LOADS; ++i) {
    lanes = Vector::Xor(lanes, Vector::Load(from + i * Vector::kBytes));
  }
  return lanes;
}

// One step of the loop; both pointers move on.
template <class Vector, Shape SHAPE, bool STREAMING>
inline void Step(std::uint8_t*& to, const std::uint8_t*& from) {
  constexpr int kStores = SHAPE == Shape::Widen2 ? 2 : SHAPE == Shape::Widen4 ? 4 : 1;
  constexpr int kLoads = SHAPE == Shape::Narrow2 ? 2 : SHAPE == Shape::Narrow4 ? 4 : 1;
  typename Vector::Lanes lanes = Vector::Zero();
  if constexpr (SHAPE == Shape::InPlace) {
    lanes = Vector::Load(to);
  } else if constexpr (SHAPE == Shape::Combine) {
    lanes = Vector::Xor(Vector::Load(from), Vector::Load(to));
  } else if constexpr (SHAPE != Shape::Fill) {
    lanes = Xored<Vector, kLoads>(from);
  }
  for (int i = 0; i < kStores; ++i) Put<Vector, STREAMING>(to + i * Vector::kBytes, lanes);
  to += kStores * Vector::kBytes;
  from += kLoads * Vector::kBytes;
}

template <Shape SHAPE>
constexpr std::size_t SourceBytes(std::size_t written) {
  if (SHAPE == Shape::Widen2) return written / 2;
  if (SHAPE == Shape::Widen4) return written / 4;
  if (SHAPE == Shape::Narrow2) return written * 2;
  return SHAPE == Shape::Narrow4 ? written * 4 : written;
}

// A vector that is not on its boundary starts and ends the row where it has to;
// it overlaps its neighbours.
template <class Vector, Shape SHAPE, bool STREAMING>
void HollowLoop(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes) {
  constexpr std::size_t kStepBytes =
      SHAPE == Shape::Widen2 ? 2 * Vector::kBytes
                             : (SHAPE == Shape::Widen4 ? 4 : 1) * std::size_t{Vector::kBytes};
  if (bytes < kStepBytes) {
    std::memset(to, 0, bytes);
    return;
  }
  const auto stepAt = [&](std::size_t offset) {
    std::uint8_t* there = to + offset;
    const std::uint8_t* source = from + SourceBytes<SHAPE>(offset);
    Step<Vector, SHAPE, false>(there, source);
  };
  const std::size_t head = -reinterpret_cast<std::uintptr_t>(to) % Vector::kBytes;
  if (head != 0) stepAt(0);
  if ((bytes - head) % kStepBytes != 0) stepAt(bytes - kStepBytes);
  to += head;
  from += SourceBytes<SHAPE>(head);
#pragma GCC unroll 4
  for (std::size_t steps = (bytes - head) / kStepBytes; steps != 0; --steps) {
    Step<Vector, SHAPE, STREAMING>(to, from);
  }
}

template <class Vector, bool STREAMING>
HollowRow HollowOf(Shape shape) {
  switch (shape) {
    case Shape::Widen2:
      return HollowLoop<Vector, Shape::Widen2, STREAMING>;
    case Shape::Widen4:
      return HollowLoop<Vector, Shape::Widen4, STREAMING>;
    case Shape::Narrow2:
      return HollowLoop<Vector, Shape::Narrow2, STREAMING>;
    case Shape::Narrow4:
      return HollowLoop<Vector, Shape::Narrow4, STREAMING>;
    case Shape::Fill:
      return HollowLoop<Vector, Shape::Fill, STREAMING>;
    case Shape::InPlace:
      return HollowLoop<Vector, Shape::InPlace, STREAMING>;
    case Shape::Combine:
      return HollowLoop<Vector, Shape::Combine, STREAMING>;
    default:
      return HollowLoop<Vector, Shape::Copy, STREAMING>;
  }
}

template <class Vector>
HollowRow HollowOf(Shape shape, bool streaming) {
  return streaming ? HollowOf<Vector, true>(shape) : HollowOf<Vector, false>(shape);
}

}  // namespace bench

#endif
