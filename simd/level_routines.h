// The routines of each level, from the source that is compiled for it.
#ifndef SIMD_LEVEL_ROUTINES_H
#define SIMD_LEVEL_ROUTINES_H

#include "simd/routines.h"

namespace simd {

extern const Routines kSse41Routines;
extern const Routines kAvx2Routines;
extern const Routines kAvx512Routines;

}  // namespace simd

#endif
