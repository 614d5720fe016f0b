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

// How near ours and the peers come to the limit, a group of bars a piece of work.
void DrawOperations(const Results& results, std::vector<Drawing>& drawings);
// The transfer modes next to a plain copy.
void DrawModes(const Results& results, std::vector<Drawing>& drawings);
// What a pixel costs as pictures grow.
void DrawGrowth(const Results& results, std::vector<Drawing>& drawings);
// Both kinds of stores as the size grows.
void DrawThresholds(const Results& results, std::vector<Drawing>& drawings);

std::vector<Drawing> AllDrawings(const Results& results);

// Those whose work starts so, in their order.
std::vector<const Result*> RowsOf(const Results& results, const std::string& start);
// Different works among them, in their order.
std::vector<std::string> WorksOf(const std::vector<const Result*>& rows);

// What all scripts begin with.
std::string Preamble();

}  // namespace bench

#endif
