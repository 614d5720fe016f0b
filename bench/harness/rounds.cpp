// Times the contenders in turn, and keeps the median of the rounds.
#include "bench/harness/rounds.h"

#include <algorithm>
#include <chrono>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

// Reading the clock costs some tens of nanoseconds; this is a thousand times as
// much.
constexpr double kShortestBatch = 50e-6;

// A peer slower than another by this factor runs in the first round only.
constexpr double kFarBehind = 10;

// The factor by which the batches of a contender may exceed the pace.
constexpr double kPatience = 4;

double SecondsOf(const Work& work, std::size_t calls) {
  const Clock::time_point start = Clock::now();
  work(calls);
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// The best of three tries, or the first if it is long enough to be reliable.
double QuickestOf(const Work& work, std::size_t calls, double enough) {
  double quickest = SecondsOf(work, calls);
  for (int more = 0; more < 2 && quickest < enough; ++more) {
    quickest = std::min(quickest, SecondsOf(work, calls));
  }
  return quickest;
}

double MedianOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

}  // namespace

Rounds::Rounds(const std::vector<Contender>& contenders, Pace pace)
    : contenders_(&contenders), pace_(pace) {
  for (const Contender& contender : contenders) {
    std::size_t calls = 1;
    while (QuickestOf(contender.work, calls, kPatience * pace.seconds) < kShortestBatch) calls *= 2;
    records_.push_back({calls, {}});
  }
}

bool Rounds::IsFarBehind(std::size_t contender) const {
  for (std::size_t i = 0; i < records_.size(); ++i) {
    if ((*contenders_)[i].role == (*contenders_)[contender].role &&
        records_[contender].figures.front() > kFarBehind * records_[i].figures.front()) {
      return true;
    }
  }
  return false;
}

double Rounds::TimeBatch(std::size_t contender) const {
  const std::size_t calls = records_[contender].calls;
  return SecondsOf((*contenders_)[contender].work, calls) / static_cast<double>(calls);
}

// The fastest batch: slower ones were disturbed by the machine. The first batch
// brings code and data of the contender back into the caches and only counts when
// there is no time for another.
double Rounds::FigureOf(std::size_t contender) const {
  const auto calls = static_cast<double>(records_[contender].calls);
  double best = TimeBatch(contender);
  double total = best * calls;
  for (int batch = 0; total < kPatience * pace_.seconds; ++batch) {
    if (batch >= pace_.batches && total >= pace_.seconds) break;
    const double seconds = TimeBatch(contender);
    best = std::min(best, seconds);
    total += seconds * calls;
  }
  return best;
}

void Rounds::RunAll() {
  for (Record& record : records_) record.figures.clear();
  const std::size_t count = records_.size();
  for (std::size_t round = 0; round < kRounds; ++round) {
    for (std::size_t i = 0; i < count; ++i) {
      const std::size_t contender = (round + i) % count;
      if (round > 0 && IsFarBehind(contender)) continue;
      records_[contender].figures.push_back(FigureOf(contender));
    }
  }
}

Timing Rounds::TimingOf(std::size_t contender) const {
  const std::vector<double>& figures = records_[contender].figures;
  const auto [least, most] = std::minmax_element(figures.begin(), figures.end());
  const double median = MedianOf(figures);
  return {median, (*most - *least) / median};
}

}  // namespace bench
