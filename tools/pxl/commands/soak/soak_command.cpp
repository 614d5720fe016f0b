// Runs random operations for a time, and checks totals and growth at the end.
#include "tools/pxl/commands/soak/soak_command.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <random>
#include <sstream>

#include "K_host.h"
#include "QDE_host.h"
#include "tools/pxl/commands/soak/soak.h"
#include "tools/pxl/sheets/memory_plot.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/exit_codes.h"
#include "tools/pxl/system/growth.h"
#include "tools/pxl/system/operating_system.h"
#include "tools/pxl/system/output_file.h"
#include "tools/pxl/system/progress.h"

namespace pxl {
namespace {

using Clock = std::chrono::steady_clock;

constexpr double kMostMinutes = 100000.0;

// Totals that must be the same before and after the run.
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

// Prints one total; throws Failure if it has changed.
template <typename Number>
void PrintTotal(const char* name, Number before, Number after) {
  std::cout << "  " << std::left << std::setw(20) << name << std::right << before << " -> " << after
            << "\n";
  if (before == after) return;
  throw Failure(std::string(name) + " have changed: " + std::to_string(before) + " before, " +
                std::to_string(after) + " after");
}

void PrintTotals(const Totals& before, const Totals& after) {
  std::cout << "Totals, before and after\n";
  PrintTotal("handles", before.handles, after.handles);
  PrintTotal("surfaces", before.surfaces, after.surfaces);
  PrintTotal("pool blocks", before.poolBlocks, after.poolBlocks);
  PrintTotal("application bytes", before.application, after.application);
  PrintTotal("system bytes", before.system, after.system);
}

void PrintCount(const char* name, std::uint64_t count) {
  std::cout << "  " << std::left << std::setw(20) << name << std::right << count << "\n";
}

std::string Mebibytes(std::uint64_t bytes) {
  std::ostringstream text;
  text << std::fixed << std::setprecision(1) << static_cast<double>(bytes) / (1024.0 * 1024.0)
       << " MiB";
  return text.str();
}

void PrintCounts(const SoakCounts& counts) {
  PrintCount("made", counts.made);
  PrintCount("disposed of", counts.disposed);
  PrintCount("locked", counts.locked);
  PrintCount("drawn", counts.drawn);
  PrintCount("re-sized", counts.resized);
  PrintCount("lack of memory", counts.refused);
  PrintCount("reloaded", counts.reloaded);
}

void PrintMemory(const std::vector<K_TimeLineSample>& samples) {
  K_PoolStatistics pool;
  K_GetPoolStatistics(&pool);
  std::cout << "  " << std::left << std::setw(20) << "pool at its peak" << Mebibytes(pool.peakBytes)
            << "\n";
  PrintCount("purges", samples.back().purges);
  PrintCount("refusals", samples.back().failures);
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

// Disposes of all Worlds from time to time, and then measures what the process uses.
// Short runs have no rounds: their measurements vary too much.
class Rounds {
 public:
  Rounds(Clock::time_point start, double seconds)
      : length_(seconds < kShortest ? kNever : std::max(1.0, seconds / kMost)),
        next_(start + length_) {}

  void EndIfOver(Clock::time_point now, Soak& soak) {
    if (now < next_) return;
    next_ += length_;
    soak.DisposeOfAll();
    EmptyPool();
    samples_.push_back(ReadProcessUse());
  }

  // One for each round.
  const std::vector<ProcessUse>& samples() const { return samples_; }

 private:
  using Length = std::chrono::duration<double>;

  static constexpr double kShortest = 10.0;
  static constexpr double kMost = 100.0;
  static constexpr double kNever = 1e9;

  static void EmptyPool() {
    const std::uint64_t limit = K_GetPoolLimit();
    K_SetPoolLimit(0);
    K_SetPoolLimit(limit);
  }

  Length length_;
  std::chrono::time_point<Clock, Length> next_;
  std::vector<ProcessUse> samples_;
};

// The number of operations, and what the process used after each round.
struct Work {
  SoakCounts counts;
  std::vector<ProcessUse> uses;
};

// Works until the time is over.
Work DoWork(Module& module, const SoakOptions& options, std::uint64_t seed) {
  const double length = options.minutes * 60.0;
  const auto start = Clock::now();
  const auto end = start + std::chrono::duration<double>(length);
  Progress progress(std::cerr, static_cast<std::size_t>(std::ceil(length)),
                    StandardErrorIsTerminal());
  Soak soak(module, seed);
  Rounds rounds(start, length);
  auto next = start;
  for (auto now = start; now < end; now = Clock::now()) {
    if (now >= next) {
      const auto passed = std::chrono::duration_cast<std::chrono::seconds>(now - start);
      progress.Show(static_cast<std::size_t>(passed.count()), "s");
      next += std::chrono::seconds(1);
    }
    soak.Step();
    rounds.EndIfOver(now, soak);
  }
  soak.DisposeOfAll();
  return {soak.counts(), rounds.samples()};
}

// Throws Failure if the process uses more and more.
void PrintUses(const std::vector<ProcessUse>& uses) {
  if (uses.empty()) return;
  std::cout << "The process, after the first and the last of " << uses.size() << " rounds\n";
  PrintProcessUse(std::cout, uses);
  if (const auto growth = FindGrowth(uses)) throw Failure("this process", *growth);
}

// Written so that NaN fails too.
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
  Work work;
  {
    Module module;
    try {
      work = DoWork(module, options, seed);
    } catch (const Failure& failure) {
      throw Failure("--seed " + std::to_string(seed), failure.what());
    }
  }
  const std::vector<K_TimeLineSample> samples = TimeLine();
  if (options.plot) SavePlot(*options.plot, samples);
  std::cout << "Worlds, with --seed " << seed << "\n";
  PrintCounts(work.counts);
  PrintMemory(samples);
  PrintTotals(before, TotalsNow());
  PrintUses(work.uses);
  return kExitSuccess;
}

}  // namespace pxl
