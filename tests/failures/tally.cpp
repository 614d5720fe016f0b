// The numbers of failures that were tried.
#include "tests/failures/tally.h"

#include <cstdio>
#include <map>
#include <set>

namespace tally {
namespace {

struct Numbers {
  std::map<Kind, int> failures;
  int operations = 0;
  int successes = 0;
  int errors = 0;
  int exceptions = 0;
  std::set<std::string> called;
};
Numbers numbers;

void Print() {
  std::printf("%d operations: %d calls failed, %d news, and %d pairs of neighbours\n",
              numbers.operations, numbers.failures[Kind::Call], numbers.failures[Kind::New],
              numbers.failures[Kind::Pair]);
  std::printf("of which %d came to success, %d to an error and %d to an exception\n",
              numbers.successes, numbers.errors, numbers.exceptions);
}

class AtTheEnd : public ::testing::Environment {
  void TearDown() override {
    Print();
    if (numbers.operations < static_cast<int>(AllOperations().size())) return;
    for (const std::string& name : ImportedCalls()) {
      EXPECT_TRUE(numbers.called.contains(name)) << name << " is called by no operation";
    }
  }
};
const ::testing::Environment* const kAtTheEnd = ::testing::AddGlobalTestEnvironment(new AtTheEnd);

}  // namespace

void Count(Kind kind, const Result& result) {
  ++numbers.failures[kind];
  if (result.exit == Exit::Throws) {
    ++numbers.exceptions;
  } else {
    ++(result.status == PXL_Err_NONE ? numbers.successes : numbers.errors);
  }
}

void NoteOperation(const std::vector<std::string>& log) {
  ++numbers.operations;
  for (const std::string& call : log) numbers.called.insert(call.substr(0, call.find('(')));
}

}  // namespace tally
