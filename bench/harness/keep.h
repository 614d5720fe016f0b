// Prevents the compiler from omitting computations with unused results.
#ifndef BENCH_HARNESS_KEEP_H
#define BENCH_HARNESS_KEEP_H

namespace bench {

inline void Keep(void* pointer) {
  asm volatile("" : : "r"(pointer) : "memory");
}

}  // namespace bench

#endif
