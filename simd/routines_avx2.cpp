// Copies, fills and byte swaps for AVX2.
#include "simd/level_routines.h"
#include "simd/vector_avx2.h"
#include "simd/vector_loops.h"

namespace simd {
namespace {

struct Vector : VectorAvx2 {};

}  // namespace

constinit const Routines kAvx2Routines = VectorRoutines<Vector>();

}  // namespace simd
