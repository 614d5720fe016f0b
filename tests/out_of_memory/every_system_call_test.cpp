// Each call to the system that mapped files make within a call of the module
// failing, alone and with the one after it.
#include <cerrno>
#include <cstdio>
#include <map>

#include "tests/out_of_memory/stage.h"
#include "tests/support/failing_system_calls/file_calls_posix.h"

namespace {

using failing_system_calls::Failure;

const std::map<std::string, int> kErrors = {
    {"getrlimit", EFAULT},       {"open", EMFILE},   {"mkostemp", EMFILE}, {"unlink", EIO},
    {"posix_fallocate", ENOSPC}, {"ftruncate", EIO}, {"close", EIO},       {"mmap", ENOMEM},
    {"munmap", ENOMEM}};

class FailingSystemCalls : public InjectedFailures {
 public:
  explicit FailingSystemCalls(const std::vector<Failure>& failures) : failures_(failures) {}
  void Begin() override { failing_system_calls::Begin(failures_); }
  void End() override {
    calls_ = failing_system_calls::Calls();
    struck_ = static_cast<std::int64_t>(failing_system_calls::Failures());
    failing_system_calls::End();
  }
  [[nodiscard]] std::int64_t Failures() const override { return struck_; }
  [[nodiscard]] const std::vector<std::string>& Calls() const { return calls_; }

 private:
  std::vector<Failure> failures_;
  std::vector<std::string> calls_;
  std::int64_t struck_ = 0;
};

// How much was tried, printed at the end.
struct Numbers {
  int calls = 0;
  int pairs = 0;
};
Numbers numbers;

class PrintedNumbers : public ::testing::Environment {
  void SetUp() override { PXL_Birth(0); }
  void TearDown() override {
    PXL_Death();
    std::printf("%d calls to the system failed within calls of the module, and %d pairs\n",
                numbers.calls, numbers.pairs);
  }
};
const ::testing::Environment* const kPrintedNumbers =
    ::testing::AddGlobalTestEnvironment(new PrintedNumbers);

}  // namespace

class EverySystemCall : public ::testing::TestWithParam<Scenario> {
 protected:
  static std::vector<std::string> Try(const std::vector<Failure>& failures);
};

std::vector<std::string> EverySystemCall::Try(const std::vector<Failure>& failures) {
  FailingSystemCalls injected(failures);
  Play(GetParam(), injected);
  EXPECT_EQ(injected.Failures(), static_cast<std::int64_t>(failures.size()));
  // The next file releases the resources that the system did not take back.
  FailingSystemCalls none({});
  Play(Scenario{.name = "Next", .prepare = [](Stage&) {}, .run = MakeAMappedFile, .statuses = {}},
       none);
  EXPECT_EQ(failing_system_calls::Views(), 0U);
  EXPECT_EQ(failing_system_calls::OpenDescriptors(), 0U);
  return injected.Calls();
}

TEST_P(EverySystemCall, MayFail) {
  const std::vector<std::string> undisturbed = Try({});
  for (std::size_t nth = 1; nth <= undisturbed.size(); ++nth) {
    SCOPED_TRACE(undisturbed[nth - 1]);
    const Failure first = {nth, kErrors.at(undisturbed[nth - 1])};
    const std::vector<std::string> disturbed = Try({first});
    ++numbers.calls;
    if (disturbed.size() <= nth) continue;
    SCOPED_TRACE("and then " + disturbed[nth]);
    Try({first, {nth + 1, kErrors.at(disturbed[nth])}});
    ++numbers.pairs;
  }
}

INSTANTIATE_TEST_SUITE_P(In, EverySystemCall, ::testing::ValuesIn(MappedScenarios()),
                         [](const auto& tested) { return tested.param.name; });
