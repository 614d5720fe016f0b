// The rows of blits between deep Worlds.
#ifndef BENCH_ROWS_CONVERSIONS_H
#define BENCH_ROWS_CONVERSIONS_H

#include "bench/rows/rows.h"

namespace bench {

// Sets up a blit of the module from one depth to another, with limit and plain loop.
std::vector<Contender> SetUpBlit(int from, int to, const Size& size, bool withPeers);

void AddConversions();

}  // namespace bench

#endif
