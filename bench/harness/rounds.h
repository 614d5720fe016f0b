// Interleaved rounds: each one runs all contenders, so that a slow moment of the
// machine affects all of them.
#ifndef BENCH_HARNESS_ROUNDS_H
#define BENCH_HARNESS_ROUNDS_H

#include <vector>

#include "bench/subjects/contender.h"

namespace bench {

inline constexpr int kRounds = 5;

// How long one contender runs in one round.
struct Pace {
  double seconds;
  int batches;  // at least, unless a call takes long
};

struct Timing {
  double seconds;  // of a call: the median of the rounds
  double spread;   // largest less smallest round, as a part of the median
};

class Rounds {
 public:
  // Warms up all contenders and determines the calls of a batch.
  Rounds(const std::vector<Contender>& contenders, Pace pace);

  // Discards earlier figures. Every round starts with another contender.
  void RunAll();

  Timing TimingOf(std::size_t contender) const;

 private:
  // The figures of a contender.
  struct Record {
    std::size_t calls;            // in a batch
    std::vector<double> figures;  // seconds of a call in the first round, the second...
  };

  // By the first round.
  bool IsFarBehind(std::size_t contender) const;
  double TimeBatch(std::size_t contender) const;
  double FigureOf(std::size_t contender) const;

  const std::vector<Contender>* contenders_;
  Pace pace_;
  std::vector<Record> records_;
};

}  // namespace bench

#endif
