// The rows of blits between surfaces.
#ifndef BENCH_ROWS_DRAWING_H
#define BENCH_ROWS_DRAWING_H

#include "bench/rows/rows.h"

namespace bench {

// Sets up a copy of one surface to another, with its limit.
std::vector<Contender> SetUpDrawnCopy(const Size& size);

void AddDrawing();

}  // namespace bench

#endif
