// The row routines for AVX2.
#include "host/QDE/rows/level_routines.h"
#include "host/QDE/rows/vector_routines.h"
#include "simd/vector_avx2.h"

namespace qde {
namespace {

struct Vector : simd::VectorAvx2 {};

}  // namespace

constinit const LevelRoutines kAvx2Routines = RoutinesWithGather<Vector>();

}  // namespace qde
