// Scripts for gnuplot, with their data inside.
#ifndef BENCH_REPORT_PLOTS_H
#define BENCH_REPORT_PLOTS_H

#include <filesystem>

#include "bench/harness/session.h"

namespace bench {

// One script a plot. Each draws into the file that gnuplot's variable `output`
// names, for the terminal that is set.
void WritePlots(const Session& session, const std::filesystem::path& folder);

}  // namespace bench

#endif
