// The rows of single pixels.
#ifndef BENCH_ROWS_PIXELS_H
#define BENCH_ROWS_PIXELS_H

namespace bench {

void AddPixels();

}  // namespace bench

#endif
