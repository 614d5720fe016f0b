// The goals, and whether a row meets its own.
#ifndef BENCH_HARNESS_GOALS_H
#define BENCH_HARNESS_GOALS_H

#include <string>
#include <vector>

#include "bench/harness/results.h"

namespace bench {

// Ours takes at most `most` times what the fastest of that role takes.
struct Goal {
  std::string work;  // of the rows it holds for; they start with it
  Role against;
  double most;
};

enum class Verdict { NoGoal, Met, Missed, Unmeasured };

// A row with a larger spread is not evaluated.
inline constexpr double kMostSpread = 0.10;

Verdict VerdictOf(const Result& result);
std::string NameOf(Verdict verdict);

// The goals of a row in one short text; empty for none.
std::string GoalsOf(const Result& result);

// The goals that hold for all sizes of one work together.
struct GroupVerdict {
  std::string text;
  Verdict verdict;
};
std::vector<GroupVerdict> JudgeGroups(const std::vector<Result>& results);

}  // namespace bench

#endif
