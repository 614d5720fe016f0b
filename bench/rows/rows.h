// The rows, by subject. Each function adds those of its own file.
#ifndef BENCH_ROWS_ROWS_H
#define BENCH_ROWS_ROWS_H

#include <array>
#include <vector>

#include "bench/harness/row.h"

namespace bench {

struct Size {
  int width;
  int height;
};

// Which sizes are shown; the quick run leaves the largest out.
std::vector<Size> CommonSizes();
RowName NameFor(const std::string& work, const Size& size);

// Adds a row unless so many bytes are more than half of the free memory.
void AddRowIfFits(const RowName& name, std::uint64_t bytes, const Setup& setUp);

// A blit of the module from a depth to another, with limit and plain loop.
std::vector<Contender> SetUpBlit(int from, int to, const Size& size, bool withPeers);
// A copy of one surface to another, with its limit.
std::vector<Contender> SetUpDrawnCopy(const Size& size);

void AddConversions();
void AddFills();
void AddAllocations();
void AddLocks();
void AddLife();
void AddPixels();
void AddDrawing();
void AddGrowth();
void AddThresholds();

}  // namespace bench

#endif
