// Every `new` failing, and failures in pairs: any failure of one call or one `new`,
// and after it the next call that can fail, so that the handling of a failure fails
// as well. Two failures must have a result that one could have, or one that the
// operation lists for two.
#include <algorithm>
#include <optional>

#include "tests/failures/fault_runner.h"
#include "tests/failures/tally.h"

using ::testing::ValuesIn;

namespace {

std::vector<Result> AllowedIn(const Operation& operation) {
  std::vector<Result> allowed = operation.ofTwo;
  allowed.push_back(operation.result);
  for (const Line& line : operation.table) allowed.push_back(line.result);
  return allowed;
}

std::vector<Fault> FaultsAt(const Point& point) {
  std::vector<Fault> faults;
  for (const Way way : WaysOf(point.call)) faults.push_back({point.call, point.nth, way});
  return faults;
}

std::vector<Fault> FaultsOfTable(const Operation& operation) {
  std::vector<Fault> faults;
  for (const Line& line : operation.table) {
    for (const Way way : line.ways) faults.push_back({line.call, line.nth, way});
  }
  return faults;
}

std::vector<Fault> FaultsOfNew(const Outcome& undisturbed) {
  std::vector<Fault> faults;
  for (const Point& point : undisturbed.points) {
    if (point.call != kNew) continue;
    const std::vector<Fault> here = FaultsAt(point);
    faults.insert(faults.end(), here.begin(), here.end());
  }
  return faults;
}

// The ways in which the first such point after the first failure can fail.
template <typename Condition>
std::vector<Fault> NextFaults(const Outcome& outcome, Condition condition) {
  const auto begin = outcome.points.begin() + static_cast<std::ptrdiff_t>(outcome.firstFailure);
  const auto next = std::find_if(begin, outcome.points.end(), condition);
  return next != outcome.points.end() ? FaultsAt(*next) : std::vector<Fault>{};
}

std::vector<Fault> Neighbours(const Fault& first, const Outcome& outcome) {
  std::vector<Fault> faults = NextFaults(outcome, [&](const Point& point) {
    return point.call != kNew && !WaysOf(point.call).empty();
  });
  const std::vector<Fault> news =
      NextFaults(outcome, [](const Point& point) { return point.call == kNew; });
  faults.insert(faults.end(), news.begin(), news.end());
  // A call that fails from there on needs no second failure of the same name.
  const bool goesOn = first.way == Way::FailsFromHere;
  std::erase_if(faults, [&](const Fault& fault) { return goesOn && fault.call == first.call; });
  return faults;
}

}  // namespace

class EveryPair : public FaultRunner, public ::testing::WithParamInterface<Operation> {
 protected:
  EveryPair() : FaultRunner(GetParam()), allowed_(AllowedIn(GetParam())) {}

  Outcome Try(const std::vector<Fault>& faults, std::optional<tally::Kind> kind);
  void TryWithNeighbours(const Fault& first, std::optional<tally::Kind> kind);

 private:
  const std::vector<Result> allowed_;
};

Outcome EveryPair::Try(const std::vector<Fault>& faults, std::optional<tally::Kind> kind) {
  Prepare();
  Outcome outcome = Run(faults);
  EXPECT_EQ(outcome.struck, faults.size());
  const Result result = Conclude(outcome);
  const bool allowed = std::find(allowed_.begin(), allowed_.end(), result) != allowed_.end();
  EXPECT_TRUE(allowed) << "gave " << result;
  if (kind) tally::Count(*kind, result);
  return outcome;
}

void EveryPair::TryWithNeighbours(const Fault& first, std::optional<tally::Kind> kind) {
  SCOPED_TRACE(Described(first));
  const Outcome outcome = Try({first}, kind);
  for (const Fault& second : Neighbours(first, outcome)) {
    SCOPED_TRACE("and then " + Described(second));
    Try({first, second}, tally::Kind::Pair);
  }
}

TEST_P(EveryPair, LeavesTheModuleWhole) {
  for (const Fault& fault : FaultsOfTable(GetParam())) TryWithNeighbours(fault, std::nullopt);
  for (const Fault& fault : FaultsOfNew(Try({}, std::nullopt))) {
    TryWithNeighbours(fault, tally::Kind::New);
  }
}

INSTANTIATE_TEST_SUITE_P(In, EveryPair, ValuesIn(AllOperations()), OperationName);
