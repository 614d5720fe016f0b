// The rows of locks, and of birth with death.
#ifndef BENCH_ROWS_LOCKS_H
#define BENCH_ROWS_LOCKS_H

namespace bench {

void AddLocks();
void AddLife();

}  // namespace bench

#endif
