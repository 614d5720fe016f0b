// An exported function of another library that does nothing, to time the call itself.
#ifndef BENCH_ROWS_EMPTY_CALL_H
#define BENCH_ROWS_EMPTY_CALL_H

#include <cstdint>

extern "C" __attribute__((visibility("default"))) std::int32_t BENCH_EmptyCall(const void* source,
                                                                               void* destination);

#endif
