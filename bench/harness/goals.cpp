#include "bench/harness/goals.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace bench {
namespace {

// The one list. A goal holds for every row whose work starts with its own.
// Ahead of a peer means at most as long; where a reference is named, the row
// says what it is.
const std::vector<Goal> kGoals = {
    {"blit ", Role::Limit, 1 / 0.90},
    {"blit ", Role::Peer, 1},
    {"clear to", Role::Limit, 1 / 0.95},
    {"make, dispose", Role::Reference, 20},
    {"make cleared, dispose", Role::Reference, 1 / 0.95},
    {"make, touch, dispose", Role::Limit, 1.3},
    {"pixel ", Role::Reference, 4},
    {"draw 1:1", Role::Limit, 1 / 0.90},
    {"draw 2:1 down", Role::Peer, 1},
    {"draw 1:2 up", Role::Peer, 1},
    {"draw mode ", Role::Reference, 3},
    {"draw 32 to 8", Role::Reference, 5},
    {"growth ", Role::Limit, 1.15},
    {"stores ", Role::Reference, 1.15},
};

// At least this much of the limit over all sizes of a work.
constexpr double kLeastMean = 0.95;
const std::string kMeanWork = "blit ";

std::vector<Goal> GoalsFor(const RowName& name) {
  std::vector<Goal> goals;
  std::copy_if(kGoals.begin(), kGoals.end(), std::back_inserter(goals),
               [&name](const Goal& goal) { return name.work.starts_with(goal.work); });
  return goals;
}

std::string TextOf(const Goal& goal, const Result& result) {
  switch (goal.against) {
    case Role::Limit:
      return fmt::format("{:.2f} of the limit", 1 / goal.most);
    case Role::Peer:
      return "ahead of peers";
    default:
      return fmt::format("{:.3g} x {}", goal.most, result.Fastest(goal.against)->name);
  }
}

}  // namespace

Verdict VerdictOf(const Result& result) {
  Verdict verdict = Verdict::NoGoal;
  for (const Goal& goal : GoalsFor(result.name)) {
    const Measured* other = result.Fastest(goal.against);
    if (other == nullptr) continue;
    if (result.Spread() > kMostSpread) return Verdict::Unmeasured;
    if (result.Ours().ms > goal.most * other->ms) return Verdict::Missed;
    verdict = Verdict::Met;
  }
  return verdict;
}

std::string NameOf(Verdict verdict) {
  switch (verdict) {
    case Verdict::Met:
      return "met";
    case Verdict::Missed:
      return "missed";
    case Verdict::Unmeasured:
      return "unmeasured";
    default:
      return "";
  }
}

std::string GoalsOf(const Result& result) {
  std::string text;
  for (const Goal& goal : GoalsFor(result.name)) {
    if (result.Fastest(goal.against) == nullptr) continue;
    if (!text.empty()) text += ", ";
    text += TextOf(goal, result);
  }
  return text;
}

std::vector<Mean> MeansOf(const std::vector<Result>& results) {
  std::vector<Mean> means;
  for (const Result& first : results) {
    const std::string& work = first.name.work;
    const auto isDone = [&work](const Mean& mean) { return mean.work == work; };
    if (!work.starts_with(kMeanWork) || std::any_of(means.begin(), means.end(), isDone)) continue;
    double logarithms = 0;
    double count = 0;
    bool steady = true;
    for (const Result& result : results) {
      if (result.name.work != work) continue;
      logarithms += std::log(result.Ratio());
      ++count;
      steady = steady && result.Spread() <= kMostSpread;
    }
    const double mean = std::exp(logarithms / count);
    const Verdict verdict = !steady              ? Verdict::Unmeasured
                            : mean >= kLeastMean ? Verdict::Met
                                                 : Verdict::Missed;
    means.push_back({work, mean, kLeastMean, verdict});
  }
  return means;
}

}  // namespace bench
