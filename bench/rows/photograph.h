// A photograph to draw, for rows whose speed depends on the picture.
#ifndef BENCH_ROWS_PHOTOGRAPH_H
#define BENCH_ROWS_PHOTOGRAPH_H

#include "bench/subjects/picture.h"

namespace bench {

// Fills a 32-bit picture of any size with one of the samples, which is
// repeated, every other time mirrored. Throws when it cannot be read.
void FillWithPhotograph(const Picture& picture);

}  // namespace bench

#endif
