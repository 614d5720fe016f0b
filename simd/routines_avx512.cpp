// Copies, fills and byte swaps for AVX-512.
#include "simd/level_routines.h"
#include "simd/vector_avx512.h"
#include "simd/vector_loops.h"

namespace simd {
namespace {

struct Vector : VectorAvx512 {};

}  // namespace

constinit const Routines kAvx512Routines = VectorRoutines<Vector>();

}  // namespace simd
