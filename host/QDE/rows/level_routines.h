// The row routines that a level of processors has of its own.
#ifndef QDE_LEVEL_ROUTINES_H
#define QDE_LEVEL_ROUTINES_H

#include "host/QDE/rows/row_colors.h"
#include "host/QDE/rows/row_routines.h"
#include "host/QDE/rows/row_scaling.h"

namespace qde {

// Each does what the plain loop of the same name does, to the last byte. Null
// stands for the plain loop itself.
struct LevelRoutines {
  RowRoutines direct[kModeCount];  // in the order of the modes
  ScalingRoutines scaling;
  ColorRoutines colors;
};

extern const LevelRoutines kSse41Routines;
extern const LevelRoutines kAvx2Routines;
extern const LevelRoutines kAvx512Routines;

}  // namespace qde

#endif
