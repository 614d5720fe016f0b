#include "bench/harness/rounds.h"

#include <algorithm>
#include <chrono>

namespace bench {
namespace {

using Clock = std::chrono::steady_clock;

// Reading the clock costs some tens of nanoseconds; this is a thousand times as
// much.
constexpr double kShortestBatch = 50e-6;

double SecondsOf(const Work& work, std::size_t calls) {
  const Clock::time_point start = Clock::now();
  work(calls);
  return std::chrono::duration<double>(Clock::now() - start).count();
}

std::size_t CallsInABatch(const Work& work) {
  work(1);
  std::size_t calls = 1;
  while (SecondsOf(work, calls) < kShortestBatch) calls *= 2;
  return calls;
}

}  // namespace

double MedianOf(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  const std::size_t middle = values.size() / 2;
  return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Rounds::Rounds(const std::vector<Contender>& contenders, Pace pace)
    : contenders_(&contenders), pace_(pace), figures_(contenders.size()) {
  for (const Contender& contender : contenders) batches_.push_back(CallsInABatch(contender.work));
}

double Rounds::TimeOnce(std::size_t contender) const {
  const std::size_t calls = batches_[contender];
  return SecondsOf((*contenders_)[contender].work, calls) / static_cast<double>(calls);
}

// The first batch brings the contender's own code and data back into the caches
// and does not count.
double Rounds::FigureOf(std::size_t contender) const {
  TimeOnce(contender);
  std::vector<double> figures;
  double total = 0;
  while (total < pace_.seconds || figures.size() < static_cast<std::size_t>(pace_.batches)) {
    figures.push_back(TimeOnce(contender));
    total += figures.back() * static_cast<double>(batches_[contender]);
  }
  return MedianOf(figures);
}

void Rounds::RunOne() {
  const std::size_t count = contenders_->size();
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t contender = (first_ + i) % count;
    figures_[contender].push_back(FigureOf(contender));
  }
  ++first_;
}

Timing Rounds::TimingOf(std::size_t contender) const {
  const std::vector<double>& figures = figures_[contender];
  const auto [least, most] = std::minmax_element(figures.begin(), figures.end());
  const double median = MedianOf(figures);
  return {median, (*most - *least) / median};
}

}  // namespace bench
