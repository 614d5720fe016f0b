// Plots, as scripts for gnuplot. A plot whose rows were not run is left out.
#ifndef BENCH_PLOTS_DRAWINGS_H
#define BENCH_PLOTS_DRAWINGS_H

#include <string>
#include <vector>

#include "bench/harness/results.h"

namespace bench {

struct Drawing {
  std::string name;  // of the file, without suffix
  std::string script;
};

using Results = std::vector<Result>;

// The results whose work starts with this text, in order.
std::vector<const Result*> RowsOf(const Results& results, const std::string& start);
// The different works of results, in order.
std::vector<std::string> WorksOf(const std::vector<const Result*>& rows);

// The common head of all scripts.
std::string Preamble();

}  // namespace bench

#endif
