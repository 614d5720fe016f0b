#include "bench/rows/empty_call.h"

std::int32_t bench_EmptyCall(const void* /*source*/, void* /*destination*/) {
  return 0;
}
