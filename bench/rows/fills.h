// The rows of clearing a World.
#ifndef BENCH_ROWS_FILLS_H
#define BENCH_ROWS_FILLS_H

namespace bench {

void AddFills();

}  // namespace bench

#endif
