// The row routines for AVX-512.
#include "host/QDE/rows/level_routines.h"
#include "host/QDE/rows/vector_routines.h"
#include "simd/vector_avx512.h"

namespace qde {
namespace {

struct Vector : simd::VectorAvx512 {};

}  // namespace

constinit const LevelRoutines kAvx512Routines = RoutinesWithGather<Vector>();

}  // namespace qde
