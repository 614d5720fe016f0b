// Scripts for gnuplot, with their data inside.
#ifndef BENCH_REPORT_PLOTS_H
#define BENCH_REPORT_PLOTS_H

#include <filesystem>

#include "bench/harness/session.h"

namespace bench {

// One script for each plot. It draws into the file named by gnuplot's variable
// `output`, for the current terminal.
void WritePlots(const Session& session, const std::filesystem::path& folder);

}  // namespace bench

#endif
