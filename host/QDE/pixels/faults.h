// What a host asked to go wrong.
#ifndef QDE_FAULTS_H
#define QDE_FAULTS_H

#include "host/QDE/pixels/errors.h"

namespace qde {

// The error that the next call of this kind was to have, used up by asking.
Error TakeFault(std::int32_t call);

bool FailedUpdatesLosePixels();

// Whether this update is to replace the pointer of its world.
bool TakeReplacement();

}  // namespace qde

#endif
