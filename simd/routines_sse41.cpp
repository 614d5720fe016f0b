// Copies, fills and byte swaps for SSE4.1.
#include "simd/level_routines.h"
#include "simd/vector_loops.h"
#include "simd/vector_sse41.h"

namespace simd {
namespace {

struct Vector : VectorSse41 {};

}  // namespace

constinit const Routines kSse41Routines = VectorRoutines<Vector>();

}  // namespace simd
