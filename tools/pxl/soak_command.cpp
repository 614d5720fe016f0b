#include <chrono>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <random>
#include <sstream>

#include "K_host.h"
#include "QDE_host.h"
#include "tools/pxl/commands.h"
#include "tools/pxl/console.h"
#include "tools/pxl/memory_plot.h"
#include "tools/pxl/output_file.h"
#include "tools/pxl/progress.h"
#include "tools/pxl/soak.h"

namespace pxl {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMostMinutes = 100000.0;

// What must be as it was when all is done.
struct Totals {
  std::uint64_t handles;
  std::uint64_t surfaces;
  std::uint64_t poolBlocks;
  std::int64_t application;
  std::int64_t system;
};

Totals TotalsNow() {
  K_PoolStatistics pool;
  K_GetPoolStatistics(&pool);
  K_MemoryTotals totals;
  K_GetMemoryTotals(&totals);
  return {K_CountHandles(), QDE_CountWorlds(), pool.liveBlocks, totals.application, totals.system};
}

// One total at its end; throws Failure if that is not how it began.
template <typename Number>
void TellTotal(const char* name, Number before, Number after) {
  std::cout << "  " << std::left << std::setw(20) << name << std::right << before << " -> " << after
            << "\n";
  if (before == after) return;
  throw Failure(std::string(name) + " do not return: " + std::to_string(before) + " before, " +
                std::to_string(after) + " after");
}

void TellTotals(const Totals& before, const Totals& after) {
  std::cout << "Totals, before and after\n";
  TellTotal("handles", before.handles, after.handles);
  TellTotal("surfaces", before.surfaces, after.surfaces);
  TellTotal("pool blocks", before.poolBlocks, after.poolBlocks);
  TellTotal("application bytes", before.application, after.application);
  TellTotal("system bytes", before.system, after.system);
}

void TellCount(const char* name, std::uint64_t count) {
  std::cout << "  " << std::left << std::setw(20) << name << std::right << count << "\n";
}

std::string Mebibytes(std::uint64_t bytes) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << static_cast<double>(bytes) / (1024.0 * 1024.0)
       << " MiB";
  return text.str();
}

void TellCounts(const SoakCounts& counts) {
  TellCount("made", counts.made);
  TellCount("disposed of", counts.disposed);
  TellCount("locked", counts.locked);
  TellCount("drawn", counts.drawn);
  TellCount("re-sized", counts.resized);
  TellCount("lack of memory", counts.refused);
  TellCount("reloaded", counts.reloaded);
}

void TellMemory(const std::vector<K_TimeLineSample>& samples) {
  K_PoolStatistics pool;
  K_GetPoolStatistics(&pool);
  std::cout << "  " << std::left << std::setw(20) << "pool at its peak" << Mebibytes(pool.peakBytes)
            << "\n";
  TellCount("purges", samples.back().purges);
  TellCount("refusals", samples.back().failures);
}

std::vector<K_TimeLineSample> TimeLine() {
  std::vector<K_TimeLineSample> samples(K_MostTimeLineSamples);
  samples.resize(K_ReadTimeLine(samples.data(), samples.size()));
  return samples;
}

void SavePlot(const std::filesystem::path& path, std::vector<K_TimeLineSample> samples) {
  OutputFile file(path);
  WriteMemoryPlot(file.stream(), {"Memory of Worlds made, drawn and disposed of at random",
                                  std::move(samples), K_GetMemoryBudget()});
  file.Commit();
}

// Works until the time is over; gives what was done.
SoakCounts Work(Module& module, const SoakOptions& options, std::uint64_t seed) {
  const auto seconds = static_cast<std::size_t>(std::ceil(options.minutes * 60.0));
  const auto start = Clock::now();
  const auto end = start + std::chrono::duration<double>(options.minutes * 60.0);
  Progress progress(std::cerr, seconds, StandardErrorIsTerminal());
  Soak soak(module, seed);
  auto next = start;
  for (auto now = start; now < end; now = Clock::now()) {
    if (now >= next) {
      const auto passed = std::chrono::duration_cast<std::chrono::seconds>(now - start);
      progress.Show(static_cast<std::size_t>(passed.count()), "s");
      next += std::chrono::seconds(1);
    }
    soak.Step();
  }
  soak.DisposeOfAll();
  return soak.counts();
}

// Written so that what is no number fails too.
void CheckMinutes(double minutes) {
  if (minutes > 0.0 && minutes <= kMostMinutes) return;
  throw UsageError("--minutes", "must be above 0 and at most 100000");
}

void CheckPlotName(const std::filesystem::path& path) {
  if (path.extension() != ".svg") throw UsageError(path.string(), "the ending must be .svg");
  CheckOutputPlace(path);
}

}  // namespace

int RunSoak(const SoakOptions& options) {
  CheckMinutes(options.minutes);
  if (options.plot) CheckPlotName(*options.plot);
  if (options.budget) K_SetMemoryBudget(*options.budget);
  const std::uint64_t seed = options.seed.value_or(std::random_device{}());
  const Totals before = TotalsNow();
  K_SetTimeLine(1);
  SoakCounts counts;
  {
    Module module;
    try {
      counts = Work(module, options, seed);
    } catch (const Failure& failure) {
      throw Failure("--seed " + std::to_string(seed), failure.what());
    }
  }
  const std::vector<K_TimeLineSample> samples = TimeLine();
  if (options.plot) SavePlot(*options.plot, samples);
  std::cout << "Worlds, with --seed " << seed << "\n";
  TellCounts(counts);
  TellMemory(samples);
  TellTotals(before, TotalsNow());
  return kExitSuccess;
}

}  // namespace pxl
