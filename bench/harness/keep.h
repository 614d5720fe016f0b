// Keeps the compiler from leaving out what nobody looks at.
#ifndef BENCH_HARNESS_KEEP_H
#define BENCH_HARNESS_KEEP_H

namespace bench {

inline void Keep(void* pointer) {
  asm volatile("" : : "r"(pointer) : "memory");
}

}  // namespace bench

#endif
