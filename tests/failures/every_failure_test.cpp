// Every operation, with every call inside it failing in every way, one at a
// time. The tables hold the expected results.
#include <algorithm>
#include <map>

#include "tests/failures/fault_runner.h"
#include "tests/failures/tally.h"

using ::testing::ValuesIn;

class EveryFailure : public FaultRunner, public ::testing::WithParamInterface<Operation> {
 protected:
  EveryFailure() : FaultRunner(GetParam()) {}

  void CheckPoint(const Fault& fault, const Result& expected);
  static void CheckTableIsComplete(const std::vector<std::string>& log);
};

void EveryFailure::CheckPoint(const Fault& fault, const Result& expected) {
  SCOPED_TRACE(Described(fault));
  Prepare();
  const Outcome outcome = Run({fault});
  EXPECT_GE(outcome.struck, 1U);
  EXPECT_EQ(Conclude(outcome), expected);
  tally::Count(tally::Kind::Call, expected);
}

// Each way of failing of each call has exactly one line.
void EveryFailure::CheckTableIsComplete(const std::vector<std::string>& log) {
  std::map<std::string, int> calls;
  for (const std::string& logged : log) {
    const std::string name = CallName(logged);
    const int nth = ++calls[name];
    for (const Way way : WaysOf(name)) {
      int lines = 0;
      for (const Line& line : GetParam().table) {
        if (line.call != name || line.nth != nth) continue;
        lines += static_cast<int>(std::count(line.ways.begin(), line.ways.end(), way));
      }
      EXPECT_EQ(lines, 1) << Described({name, nth, way});
    }
  }
}

TEST_P(EveryFailure, LeavesTheModuleWhole) {
  Prepare();
  const Outcome outcome = Run({});
  CheckTableIsComplete(outcome.log);
  EXPECT_EQ(Conclude(outcome), GetParam().result);
  for (const Line& line : GetParam().table) {
    for (const Way way : line.ways) CheckPoint({line.call, line.nth, way}, line.result);
  }
  tally::NoteOperation(outcome.log);
}

INSTANTIATE_TEST_SUITE_P(In, EveryFailure, ValuesIn(AllOperations()), OperationName);
