// The routines that are compiled for one level each.
#ifndef SIMD_LEVEL_ROUTINES_H
#define SIMD_LEVEL_ROUTINES_H

#include "simd/routines.h"

namespace simd {

extern const Routines ROUTINES_SSE41;
extern const Routines ROUTINES_AVX2;
extern const Routines ROUTINES_AVX512;

}  // namespace simd

#endif
