// The line plots.
#ifndef BENCH_PLOTS_LINES_H
#define BENCH_PLOTS_LINES_H

#include "bench/plots/drawings.h"

namespace bench {

// Time for a pixel by size of picture.
void DrawGrowth(const Results& results, std::vector<Drawing>& drawings);
// Both kinds of stores as the size grows.
void DrawThresholds(const Results& results, std::vector<Drawing>& drawings);

}  // namespace bench

#endif
