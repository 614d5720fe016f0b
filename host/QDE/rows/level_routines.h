// The row routines of each level, from the source that is compiled for it.
#ifndef QDE_LEVEL_ROUTINES_H
#define QDE_LEVEL_ROUTINES_H

#include "host/QDE/rows/row_colors.h"
#include "host/QDE/rows/row_routines.h"
#include "host/QDE/rows/row_scaling.h"

namespace qde {

// Each has the same results as the plain loop of its name. Null: the plain loop is
// used.
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
