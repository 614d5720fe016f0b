#include <algorithm>
#include <chrono>
#include <cmath>
#include <iomanip>
#include <iostream>
#include <random>
#include <sstream>

#include "K_host.h"
#include "QDE_host.h"
#include "tools/pxl/commands/commands.h"
#include "tools/pxl/commands/soak.h"
#include "tools/pxl/sheets/memory_plot.h"
#include "tools/pxl/system/console.h"
#include "tools/pxl/system/growth.h"
#include "tools/pxl/system/output_file.h"
#include "tools/pxl/system/progress.h"

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

// Disposes of everything from time to time, and then looks at what the process
// still holds. Short runs have no rounds: too little is settled in them.
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

  // One a round.
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

// What was done, and what the process held after each round of it.
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

// Throws Failure if it holds more and more.
void TellUses(const std::vector<ProcessUse>& uses) {
  if (uses.empty()) return;
  std::cout << "The process, after the first and the last of " << uses.size() << " rounds\n";
  TellProcessUse(std::cout, uses);
  if (const auto growth = FindGrowth(uses)) throw Failure("this process", *growth);
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
  TellCounts(work.counts);
  TellMemory(samples);
  TellTotals(before, TotalsNow());
  TellUses(work.uses);
  return kExitSuccess;
}

}  // namespace pxl
