// Interleaved rounds: in each, all contenders take their turn, so that a slow
// moment of the machine hits them alike.
#ifndef BENCH_HARNESS_ROUNDS_H
#define BENCH_HARNESS_ROUNDS_H

#include <vector>

#include "bench/harness/contender.h"

namespace bench {

inline constexpr int kRounds = 5;

// How long one contender runs in one round.
struct Pace {
  double seconds;
  int batches;  // at least; a round's figure is their median
};

struct Timing {
  double seconds;  // a call: the median of the rounds
  double spread;   // largest less smallest round, as a part of the median
};

double MedianOf(std::vector<double> values);

// The seconds of a call of each contender in the first round, the second...
class Rounds {
 public:
  // Warms everything up and finds how many calls make up a batch.
  Rounds(const std::vector<Contender>& contenders, Pace pace);

  // Every round starts with another contender.
  void RunOne();
  void Forget() { figures_.assign(contenders_->size(), {}); }

  Timing TimingOf(std::size_t contender) const;

 private:
  double TimeOnce(std::size_t contender) const;
  double FigureOf(std::size_t contender) const;

  const std::vector<Contender>* contenders_;
  Pace pace_;
  std::vector<std::size_t> batches_;  // calls in a batch, for each contender
  std::vector<std::vector<double>> figures_;
  std::size_t first_ = 0;
};

}  // namespace bench

#endif
