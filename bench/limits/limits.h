// The limits of whole pictures, at the widest level of this processor.
#ifndef BENCH_LIMITS_LIMITS_H
#define BENCH_LIMITS_LIMITS_H

#include <vector>

#include "bench/limits/shapes.h"
#include "bench/subjects/contender.h"
#include "bench/subjects/operations.h"

namespace bench {

// With plain and with streaming stores; a copy also with memcpy, whole and in
// pieces.
std::vector<Contender> LimitsOf(Shape shape, const Picture& source, const Picture& destination);
// Of a scaling by two: every second row is read, or each load is stored twice in
// each of two rows.
std::vector<Contender> LimitsOfHalving(const Picture& source, const Picture& destination);
std::vector<Contender> LimitsOfDoubling(const Picture& source, const Picture& destination);
// Zero bytes: memset itself.
Contender LimitOfZeroFill(const Picture& destination);

}  // namespace bench

#endif
