// The exported function that does nothing.
#include "bench/rows/empty_call.h"

std::int32_t BENCH_EmptyCall(const void* /*source*/, void* /*destination*/) {
  return 0;
}
