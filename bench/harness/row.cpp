// Registers rows with Google Benchmark and runs them.
#include "bench/harness/row.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <exception>

#include "bench/harness/goals.h"
#include "bench/harness/session.h"

namespace bench {
namespace {

// A disturbed row is measured again as a whole. The run with the smallest spread
// counts, regardless of its figures.
constexpr int kMostRuns = 3;
constexpr std::chrono::seconds kMostTime(20);

Result ResultOf(const RowName& name, const std::vector<Contender>& contenders,
                const Rounds& rounds) {
  Result result{name, {}};
  for (std::size_t i = 0; i < contenders.size(); ++i) {
    const Contender& contender = contenders[i];
    const Timing timing = rounds.TimingOf(i);
    result.all.push_back(
        {contender.role, contender.name, timing.seconds * 1e3, timing.spread, contender.exactness});
  }
  return result;
}

Result Measure(const RowName& name, const std::vector<Contender>& contenders) {
  Rounds rounds(contenders, CurrentSession().pace);
  const auto start = std::chrono::steady_clock::now();
  Result best;
  for (int run = 0; run < kMostRuns; ++run) {
    rounds.RunAll();
    Result result = ResultOf(name, contenders, rounds);
    if (run == 0 || result.Spread() < best.Spread()) best = std::move(result);
    if (best.Spread() <= kMostSpread) break;
    if (std::chrono::steady_clock::now() - start > kMostTime) break;
  }
  return best;
}

// Google Benchmark sees one iteration, whose time is ours.
void RunRow(benchmark::State& state, const RowName& name, const Setup& setUp) {
  for (auto iteration : state) {
    static_cast<void>(iteration);
    try {
      const std::vector<Contender> contenders = setUp();
      const Result result = Measure(name, contenders);
      state.SetIterationTime(result.Ours().ms / 1e3);
      CurrentSession().results.push_back(result);
    } catch (const std::exception& failure) {
      state.SkipWithError(failure.what());
      break;
    }
  }
}

}  // namespace

void AddRow(const RowName& name, const Setup& setUp) {
  const std::string full = name.work + "/" + name.size;
  benchmark::RegisterBenchmark(full.c_str(), RunRow, name, setUp)
      ->UseManualTime()
      ->Iterations(1)
      ->Unit(benchmark::kMillisecond);
}

void AddRemark(const std::string& remark) {
  CurrentSession().remarks.push_back(remark);
}

Session& CurrentSession() {
  static Session session;
  return session;
}

}  // namespace bench
