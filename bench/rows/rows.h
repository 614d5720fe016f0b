// The sizes and names of the rows.
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

// The sizes of most rows; the quick run omits the largest.
std::vector<Size> CommonSizes();
RowName NameFor(const std::string& work, const Size& size);

// Adds a row unless it needs more than half of the free memory.
void AddRowIfFits(const RowName& name, std::uint64_t bytes, const Setup& setUp);

}  // namespace bench

#endif
