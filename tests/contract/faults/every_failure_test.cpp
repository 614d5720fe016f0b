// Every operation, with every call inside it failing in every way, one at a
// time. What has to come out stands in the tables.
#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <optional>
#include <sstream>

#include "tests/contract/faults/operation.h"

using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::ValuesIn;

namespace {

constexpr std::size_t CHANGING_PIXEL_BUFFER = 27;
constexpr std::size_t ROW_TOO_LARGE = 29;

std::string CallName(const std::string& logged) {
  return logged.substr(0, logged.find('('));
}

std::string Described(const Fault& fault) {
  std::ostringstream text;
  text << fault.call << " " << fault.nth << " " << fault.way;
  return text.str();
}

// How much was tried, printed at the end.
struct Tally {
  int failures = 0;
  int operations = 0;
};
Tally tally;

class PrintedTally : public ::testing::Environment {
  void TearDown() override {
    std::printf("%d failures injected into %d operations\n", tally.failures, tally.operations);
  }
};
const ::testing::Environment* const PRINTED_TALLY =
    ::testing::AddGlobalTestEnvironment(new PrintedTally);

// Translations that are far too long for the report, for as long as it lives.
class LongTranslations {
 public:
  LongTranslations() : buffer_(Entry(CHANGING_PIXEL_BUFFER)), row_(Entry(ROW_TOO_LARGE)) {
    Entry(CHANGING_PIXEL_BUFFER) = text_.c_str();
    Entry(ROW_TOO_LARGE) = text_.c_str();
  }
  ~LongTranslations() {
    Entry(CHANGING_PIXEL_BUFFER) = buffer_;
    Entry(ROW_TOO_LARGE) = row_;
  }

 private:
  static const char*& Entry(std::size_t index) { return PXL_G_zref->entries[index].key; }
  std::string text_ = "key=" + std::string(3000, 'x') + "%d";
  const char* buffer_;
  const char* row_;
};

}  // namespace

class EveryFailure : public Bench, public ::testing::WithParamInterface<Operation> {
 protected:
  struct Outcome {
    std::optional<std::int32_t> status;  // none: an exception came out
    std::vector<std::string> log;
    int lostReports = 0;
    bool reached = false;
  };

  void Prepare();
  Outcome Run(const std::optional<Fault>& fault);
  void Check(const Outcome& outcome, const Result& expected);
  void CheckPoint(const Fault& fault, const Result& expected);
  void CheckTableIsComplete(const std::vector<std::string>& log);

 private:
  void Observe(const std::string& name, const std::optional<Fault>& fault, Outcome& outcome);
  void CheckWorlds(const Outcome& outcome);
  void CheckMarks(bool made);
  void CheckTheSameWorksNow();
  void Settle(const Outcome& outcome);
  [[nodiscard]] int ExpectedCount(const Outcome& outcome) const;

  std::map<std::string, int> calls_;
  int countBefore_ = 0;
  bool owned_ = false;            // a creation whose handle the module allocates
  bool disposesInPlace_ = false;  // a disposal that leaves the handle to the caller
  LongTranslations translations_;
};

namespace {

// Stands in an output that is not to be written.
PXL_WorldHandle Untouched() {
  static PXL_World* none = nullptr;
  return &none;
}

bool Hits(const Fault& fault, const std::string& name, int nth) {
  return fault.call == name &&
         (fault.nth == nth || (fault.way == Way::FailsFromHere && nth > fault.nth));
}

int CountReports(const std::vector<std::string>& log) {
  int reports = 0;
  for (const std::string& call : log) reports += IsReport(CallName(call)) ? 1 : 0;
  return reports;
}

}  // namespace

void EveryFailure::Prepare() {
  Unload();
  worldH = nullptr;
  otherH = nullptr;
  outH = Untouched();
  provider = nullptr;
  frame = nullptr;
  circumstances.clear();
  calls_.clear();
  GetParam().prepare(*this);
  ForgetLog();
  countBefore_ = PXLp_G.worldCount;
  owned_ = GetParam().effect == Effect::Creates && worldH == nullptr;
  disposesInPlace_ = GetParam().effect == Effect::Disposes && Record(worldH).ownsHandle == 0;
  std::memset(Kp_G_buffer, 'b', sizeof Kp_G_buffer - 1);
}

void EveryFailure::Observe(const std::string& name, const std::optional<Fault>& fault,
                           Outcome& outcome) {
  if (GetParam().moves) recorder_.MoveBlocks();
  const int nth = ++calls_[name];
  for (const Fault& circumstance : circumstances) {
    if (Hits(circumstance, name, nth)) FailCurrentCall(name, circumstance.way);
  }
  if (!fault || !Hits(*fault, name, nth)) return;
  FailCurrentCall(name, fault->way);
  outcome.reached = true;
  outcome.lostReports = IsThrow(fault->way) && IsReport(name) ? 1 : 0;
}

EveryFailure::Outcome EveryFailure::Run(const std::optional<Fault>& fault) {
  Outcome outcome;
  recorder_.OnCall([&](const std::string& name) { Observe(name, fault, outcome); });
  try {
    outcome.status = GetParam().run(*this);
  } catch (...) {
    outcome.status.reset();
  }
  recorder_.OnCall(nullptr);
  recorder::FailNewOf(0);
  recorder_.script.purgeLoop = nullptr;
  outcome.log = Log();
  return outcome;
}

int EveryFailure::ExpectedCount(const Outcome& outcome) const {
  if (outcome.status != 0) return countBefore_;
  if (GetParam().effect == Effect::Creates) return countBefore_ + 1;
  return GetParam().effect == Effect::Disposes ? countBefore_ - 1 : countBefore_;
}

// Only a World that is alive has marks, whoever owns its handle.
void EveryFailure::CheckMarks(bool made) {
  const bool creates = GetParam().effect == Effect::Creates && worldH != nullptr;
  if (!creates && !disposesInPlace_) return;
  EXPECT_EQ(Record(worldH).headMark, made ? 0xBECCAU : 0U);
  EXPECT_EQ(Record(worldH).tailMark, made ? 0xBECCAU : 0U);
}

// What is left: no World after a failed creation, and no handle locked.
void EveryFailure::CheckWorlds(const Outcome& outcome) {
  const bool made = GetParam().effect == Effect::Creates && outcome.status == 0;
  if (GetParam().effect == Effect::Refuses) {
    EXPECT_EQ(outH, Untouched());
  }
  if (owned_) {
    EXPECT_EQ(outH != nullptr, made);
    worldH = made ? outH : nullptr;
  }
  CheckMarks(made);
  for (PXL_WorldHandle handle : {worldH, otherH}) {
    EXPECT_FALSE(recorder_.IsLocked(reinterpret_cast<Handle>(handle)));
  }
  EXPECT_EQ(PXLp_G.worldCount, ExpectedCount(outcome));
}

void EveryFailure::Check(const Outcome& outcome, const Result& expected) {
  const bool returns = expected.exit == Exit::Returns;
  ASSERT_EQ(outcome.status.has_value(), returns);
  if (returns) {
    EXPECT_EQ(*outcome.status, expected.status);
  }
  EXPECT_EQ(CountReports(outcome.log) - outcome.lostReports, expected.reports);
  EXPECT_NE(std::memchr(Kp_G_buffer, 0, sizeof Kp_G_buffer), nullptr);
  CheckWorlds(outcome);
  Settle(outcome);
  EXPECT_THAT(recorder_.Outstanding(), SizeIs(expected.lost));
  if (GetParam().effect == Effect::Creates && circumstances.empty()) CheckTheSameWorksNow();
}

// Gives back what is still there, undisturbed. What cannot be freed stays with
// the World, so its provider is released by hand.
void EveryFailure::Settle(const Outcome& outcome) {
  const bool disposed = GetParam().effect == Effect::Disposes;
  if (disposed && outcome.status != 0 && provider != nullptr) provider->release(&provider);
  if (!disposed) {
    for (PXL_WorldHandle handle : {worldH, otherH}) {
      if (handle == nullptr || Record(handle).headMark != PXL_LiveMark) continue;
      EXPECT_EQ(PXL_DisposeWorld(handle), 0);
    }
    EXPECT_EQ(PXLp_G.worldCount, 0);
  }
  if (frame != nullptr) PXL_FreeFrame(frame, frameSize);
}

// A failure leaves no trace in the module.
void EveryFailure::CheckTheSameWorksNow() {
  const std::int32_t status = GetParam().run(*this);
  EXPECT_EQ(status, GetParam().result.status);
  if (status == 0) {
    EXPECT_EQ(PXL_DisposeWorld(owned_ ? outH : worldH), 0);
  }
  EXPECT_THAT(recorder_.Outstanding(), IsEmpty());
}

void EveryFailure::CheckPoint(const Fault& fault, const Result& expected) {
  SCOPED_TRACE(Described(fault));
  Prepare();
  const Outcome outcome = Run(fault);
  EXPECT_TRUE(outcome.reached);
  Check(outcome, expected);
  ++tally.failures;
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
  ++tally.operations;
  Prepare();
  const Outcome outcome = Run(std::nullopt);
  CheckTableIsComplete(outcome.log);
  Check(outcome, GetParam().result);
  for (const Line& line : GetParam().table) {
    for (const Way way : line.ways) CheckPoint({line.call, line.nth, way}, line.result);
  }
}

namespace {

std::string NameOf(const ::testing::TestParamInfo<Operation>& info) {
  return info.param.name;
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(InACreation, EveryFailure, ValuesIn(CreationOperations()), NameOf);
INSTANTIATE_TEST_SUITE_P(InARefusedCreation, EveryFailure, ValuesIn(RefusedCreationOperations()),
                         NameOf);
INSTANTIATE_TEST_SUITE_P(InADisposal, EveryFailure, ValuesIn(DisposalOperations()), NameOf);
INSTANTIATE_TEST_SUITE_P(InALock, EveryFailure, ValuesIn(LockOperations()), NameOf);
INSTANTIATE_TEST_SUITE_P(InAnUpdate, EveryFailure, ValuesIn(UpdateOperations()), NameOf);
INSTANTIATE_TEST_SUITE_P(InAnyOtherCall, EveryFailure, ValuesIn(OtherOperations()), NameOf);
