// The rows of making and disposing of a large frame.
#ifndef BENCH_ROWS_ALLOCATIONS_H
#define BENCH_ROWS_ALLOCATIONS_H

namespace bench {

void AddAllocations();

}  // namespace bench

#endif
