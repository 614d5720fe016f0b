// The results as files: for programs, for a paper, and as scripts for gnuplot.
#ifndef BENCH_REPORT_FILES_H
#define BENCH_REPORT_FILES_H

#include <filesystem>

#include "bench/harness/session.h"

namespace bench {

// Writes summary.json, summary.md and the plots' scripts into the folder. Throws
// std::runtime_error with the file's name when one cannot be written.
void WriteFiles(const Session& session, const std::filesystem::path& folder);

// Writes a temporary file in the same folder, then renames it.
void WriteFile(const std::filesystem::path& path, const std::string& text);

}  // namespace bench

#endif
