// The rows that compare caching and streaming stores.
#ifndef BENCH_ROWS_THRESHOLDS_H
#define BENCH_ROWS_THRESHOLDS_H

namespace bench {

void AddThresholds();

}  // namespace bench

#endif
