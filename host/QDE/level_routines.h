// The row routines that a level of processors has of its own.
#ifndef QDE_LEVEL_ROUTINES_H
#define QDE_LEVEL_ROUTINES_H

#include "row_routines.h"

namespace qde {

// Each does what the plain loop of row_routines.cpp does, to the last byte.
struct LevelRoutines {
  RowRoutines direct[kModeCount];  // in the order of the modes; null: the plain loop
};

extern const LevelRoutines kSse41Routines;
extern const LevelRoutines kAvx2Routines;
extern const LevelRoutines kAvx512Routines;

}  // namespace qde

#endif
