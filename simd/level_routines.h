// The routines that are compiled for one level each.
#ifndef SIMD_LEVEL_ROUTINES_H
#define SIMD_LEVEL_ROUTINES_H

#include "simd/routines.h"

namespace simd {

extern const Routines kSse41Routines;
extern const Routines kAvx2Routines;
extern const Routines kAvx512Routines;

}  // namespace simd

#endif
