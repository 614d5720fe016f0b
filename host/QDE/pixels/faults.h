// The failures that a host has requested.
#ifndef QDE_FAULTS_H
#define QDE_FAULTS_H

#include "host/QDE/pixels/errors.h"

namespace qde {

// Returns the error requested for the next call of this kind, and clears it.
Error TakeFault(std::int32_t call);

bool FailedUpdatesLosePixels();

// Whether this update is to replace the pointer of its world.
bool TakeReplacement();

}  // namespace qde

#endif
