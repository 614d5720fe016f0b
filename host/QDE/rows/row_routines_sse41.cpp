// The row routines for SSE4.1.
#include "host/QDE/rows/level_routines.h"
#include "host/QDE/rows/vector_routines.h"
#include "simd/vector_sse41.h"

namespace qde {
namespace {

struct Vector : simd::VectorSse41 {};

}  // namespace

constinit const LevelRoutines kSse41Routines = RoutinesWithoutGather<Vector>();

}  // namespace qde
