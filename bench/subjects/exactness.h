// Compares the results of peers with those of the module.
#ifndef BENCH_SUBJECTS_EXACTNESS_H
#define BENCH_SUBJECTS_EXACTNESS_H

#include "bench/subjects/peers.h"

namespace bench {

// Compares with the plain loops: conversions of whole numbers for all inputs,
// those of floats for a dense sample of all bit patterns and around each value
// at which the result changes, all else for random pixels of that size.
Exactness CheckExactness(Operation operation, const Prepare& prepare, int pixelBytes);

}  // namespace bench

#endif
