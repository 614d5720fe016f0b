// Hollow kernels: the loads and the stores of a piece of work without its
// arithmetic. They are the limit of speed that the module is compared with.
#ifndef BENCH_LIMITS_SHAPES_H
#define BENCH_LIMITS_SHAPES_H

#include <cstddef>
#include <cstdint>

namespace bench {

enum class Shape {
  Copy,
  Widen2,  // each load is stored twice
  Widen4,
  Narrow2,  // two loads, their lanes xor-ed, are stored once
  Narrow4,
  Fill,     // no loads
  InPlace,  // loads from where it stores
  Combine   // loads from both, their lanes xor-ed
};

// `bytes` are those that are written. `to` and `from` are both on 16-byte
// boundaries.
using HollowRow = void (*)(std::uint8_t* to, const std::uint8_t* from, std::size_t bytes);

// Compiled for one level each. Streaming ends with simd::FinishStreaming().
HollowRow HollowRowSse41(Shape shape, bool streaming);
HollowRow HollowRowAvx2(Shape shape, bool streaming);
HollowRow HollowRowAvx512(Shape shape, bool streaming);

}  // namespace bench

#endif
