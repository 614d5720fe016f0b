// A row of the table: one piece of work at one size, done by the module, by the
// limit and by peers.
#ifndef BENCH_HARNESS_ROW_H
#define BENCH_HARNESS_ROW_H

#include <functional>
#include <string>
#include <vector>

#include "bench/subjects/contender.h"

namespace bench {

// The contenders own their pictures. Exactly one is ours. May throw when the work
// cannot be set up.
using Setup = std::function<std::vector<Contender>()>;

struct RowName {
  std::string work;
  std::string size;
  double scale = 0;  // pixels or bytes, for plots
};

// Rows are identified, and selected with --benchmark_filter, by "work/size".
// A row is set up when it runs, so that the memory of only one row is held at a
// time.
void AddRow(const RowName& name, const Setup& setUp);

// The omitted contenders, with reasons.
void AddRemark(const std::string& remark);

}  // namespace bench

#endif
