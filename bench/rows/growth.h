// The rows of growing pictures.
#ifndef BENCH_ROWS_GROWTH_H
#define BENCH_ROWS_GROWTH_H

namespace bench {

void AddGrowth();

}  // namespace bench

#endif
