// The bar plots.
#ifndef BENCH_PLOTS_BARS_H
#define BENCH_PLOTS_BARS_H

#include "bench/plots/drawings.h"

namespace bench {

// Time of the limit in proportion to ours and the peers', a group of bars for each
// work.
void DrawOperations(const Results& results, std::vector<Drawing>& drawings);
// The transfer modes next to a plain copy.
void DrawModes(const Results& results, std::vector<Drawing>& drawings);

}  // namespace bench

#endif
