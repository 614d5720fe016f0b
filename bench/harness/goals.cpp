// The list of goals, and the verdicts on rows and groups.
#include "bench/harness/goals.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

namespace bench {
namespace {

// A goal holds for every row whose work starts with its text. A factor of 1 for a
// peer means at most its time. The row defines the reference.
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
    {"stores ", Role::Reference, 1.15},
};

// At least this much of the limit in the geometric mean of a work's sizes.
constexpr double kLeastMean = 0.95;
const std::string kMeanWork = "blit ";

// As pictures grow, ours keeps its distance to the limit: no size exceeds the middle
// of the series by this factor.
constexpr double kMostBend = 1.15;
const std::string kSeriesWork = "growth ";
constexpr std::size_t kShortestSeries = 3;

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

namespace {

// The works that start with this text, each with its rows.
std::map<std::string, std::vector<const Result*>> Grouped(const std::vector<Result>& results,
                                                          const std::string& start) {
  std::map<std::string, std::vector<const Result*>> groups;
  for (const Result& result : results) {
    if (result.name.work.starts_with(start)) groups[result.name.work].push_back(&result);
  }
  return groups;
}

Verdict Judge(const std::vector<const Result*>& rows, bool good) {
  const bool steady = std::all_of(rows.begin(), rows.end(),
                                  [](const Result* row) { return row->Spread() <= kMostSpread; });
  if (!steady) return Verdict::Unmeasured;
  return good ? Verdict::Met : Verdict::Missed;
}

std::vector<double> SortedRatios(const std::vector<const Result*>& rows) {
  std::vector<double> ratios;
  ratios.reserve(rows.size());
  for (const Result* row : rows) ratios.push_back(row->Ratio());
  std::sort(ratios.begin(), ratios.end());
  return ratios;
}

GroupVerdict JudgeMean(const std::string& work, const std::vector<const Result*>& rows) {
  double logarithms = 0;
  for (const double ratio : SortedRatios(rows)) logarithms += std::log(ratio);
  const double mean = std::exp(logarithms / static_cast<double>(rows.size()));
  return {fmt::format("{}: {:.2f} of the limit in the geometric mean of {} sizes, goal {:.2f}",
                      work, mean, rows.size(), kLeastMean),
          Judge(rows, mean >= kLeastMean)};
}

GroupVerdict JudgeSeries(const std::string& work, const std::vector<const Result*>& rows) {
  const std::vector<double> ratios = SortedRatios(rows);
  const double middle = ratios[ratios.size() / 2];
  const double bend = middle / ratios.front();
  return {fmt::format("{}: at most {:.2f} times the limit's own curve over {} sizes, goal {:.2f}",
                      work, bend, rows.size(), kMostBend),
          Judge(rows, bend <= kMostBend)};
}

}  // namespace

std::vector<GroupVerdict> JudgeGroups(const std::vector<Result>& results) {
  std::vector<GroupVerdict> verdicts;
  for (const auto& [work, rows] : Grouped(results, kMeanWork)) {
    verdicts.push_back(JudgeMean(work, rows));
  }
  for (const auto& [work, rows] : Grouped(results, kSeriesWork)) {
    if (rows.size() < kShortestSeries) continue;
    verdicts.push_back(JudgeSeries(work, rows));
  }
  return verdicts;
}

}  // namespace bench
