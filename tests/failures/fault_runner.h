// Runs one operation with the wanted failures, and checks the state afterwards.
#ifndef TESTS_FAILURES_FAULT_RUNNER_H
#define TESTS_FAILURES_FAULT_RUNNER_H

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "tests/failures/operation.h"

// A place where something can fail: the nth call of a name, or the nth `new`.
struct Point {
  std::string call;
  int nth;
};
// The name under which a `new` is counted.
inline constexpr const char* kNew = "new";

struct Outcome {
  std::optional<std::int32_t> status;  // none: an exception came out
  std::vector<std::string> log;
  std::vector<Point> points;  // all calls and each `new`, in order
  // How many of the points there were when the first failure struck, its own
  // one included; 0 when none did.
  std::size_t firstFailure = 0;
  std::size_t struck = 0;  // how many of the failures did
  int lostReports = 0;
};

std::string CallName(const std::string& logged);
std::string Described(const Fault& fault);

// Translations that are far too long for the report, for as long as it lives.
class LongTranslations {
 public:
  LongTranslations();
  ~LongTranslations();
  LongTranslations(const LongTranslations&) = delete;
  LongTranslations& operator=(const LongTranslations&) = delete;

 private:
  std::string text_;
  const char* buffer_;
  const char* row_;
};

class FaultRunner : public OperationFixture {
 protected:
  explicit FaultRunner(const Operation& operation) : operation_(operation) {}

  void Prepare();
  Outcome Run(const std::vector<Fault>& faults);
  // Checks that the module, the Worlds and the recorder are as the outcome
  // promises, disposes of the Worlds, and repeats a creation that failed.
  // Returns the outcome as a table states it.
  Result Conclude(const Outcome& outcome);

  const Operation& operation_;

 private:
  void Strike(const std::string& name, const std::vector<Fault>& faults, Outcome& outcome);
  bool StrikeNew(const std::vector<Fault>& faults, Outcome& outcome);
  void CheckWorlds(const Outcome& outcome);
  void CheckMarks(bool made);
  void CheckUse(PXL_WorldHandle handle);
  void CheckTheSameWorksNow();
  void DisposeOf(PXL_WorldHandle handle);
  void Settle(const Outcome& outcome);
  [[nodiscard]] int ExpectedCount(const Outcome& outcome) const;

  std::map<std::string, int> calls_;
  int countBefore_ = 0;
  PXL_World before_{};
  bool owned_ = false;            // a creation whose handle the module allocates
  bool disposesInPlace_ = false;  // a disposal that leaves the handle to the caller
  LongTranslations translations_;
};

#endif
