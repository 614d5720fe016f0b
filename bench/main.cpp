// pxl_bench: measures the speed of the module, and compares it with the limits of the
// memory and with other libraries.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <exception>

#include "PXL.h"
#include "bench/report/files.h"
#include "bench/report/reporter.h"
#include "bench/rows/allocations.h"
#include "bench/rows/conversions.h"
#include "bench/rows/drawing.h"
#include "bench/rows/fills.h"
#include "bench/rows/growth.h"
#include "bench/rows/locks.h"
#include "bench/rows/pixels.h"
#include "bench/rows/thresholds.h"
#include "transfer/kernels/conversion_tables.h"

namespace {

constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;

struct Options {
  bool quick = false;
  std::filesystem::path folder = "build/bench";
};

// Removes the program's own options; Google Benchmark reads the others.
Options TakeOptions(int* count, char** arguments) {
  constexpr const char* kFolder = "--output=";
  Options options;
  int kept = 1;
  for (int i = 1; i < *count; ++i) {
    if (std::strcmp(arguments[i], "--quick") == 0) {
      options.quick = true;
    } else if (std::strncmp(arguments[i], kFolder, std::strlen(kFolder)) == 0) {
      options.folder = arguments[i] + std::strlen(kFolder);
    } else {
      arguments[kept++] = arguments[i];
    }
  }
  *count = kept;
  return options;
}

void AddAllRows() {
  bench::AddConversions();
  bench::AddFills();
  bench::AddDrawing();
  bench::AddAllocations();
  bench::AddLocks();
  bench::AddLife();
  bench::AddPixels();
  bench::AddGrowth();
  bench::AddThresholds();
}

int Run(const Options& options) {
  bench::Session& session = bench::CurrentSession();
  session.quick = options.quick;
  if (options.quick) session.pace = {0.002, 3};
  PXLp_BuildConversionTables();  // those of the plain loops; Birth builds the library's own
  PXL_Birth(0);
  AddAllRows();
  bench::Reporter reporter(session);
  if (benchmark::RunSpecifiedBenchmarks(&reporter) == 0) return kExitUsage;  // it prints the reason
  PXL_Death();
  if (!session.results.empty()) bench::WriteFiles(session, options.folder);
  return session.failures.empty() ? 0 : kExitFailure;
}

}  // namespace

int main(int count, char** arguments) {
  try {
    const Options options = TakeOptions(&count, arguments);
    benchmark::Initialize(&count, arguments);
    if (benchmark::ReportUnrecognizedArguments(count, arguments)) return kExitUsage;
    return Run(options);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "pxl_bench: %s\n", failure.what());
    return kExitFailure;
  }
}
