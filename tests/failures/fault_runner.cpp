// Runs one operation with failures, and checks what it leaves.
#include "tests/failures/fault_runner.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <sstream>

#include "tests/failures/world_checks.h"

namespace {

constexpr std::size_t kChangingPixelBuffer = 27;
constexpr std::size_t kRowTooLarge = 29;

const char*& CatalogueEntry(std::size_t index) {
  return PXL_G_zref->entries[index].key;
}

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

void NoteFailure(const Fault& fault, int nth, Outcome& outcome) {
  if (nth == fault.nth) ++outcome.struck;
  if (outcome.firstFailure == 0) outcome.firstFailure = outcome.points.size();
}

bool IsLive(PXL_WorldHandle handle) {
  return handle != nullptr && RecordOf(handle)->headMark == PXL_LiveMark;
}

}  // namespace

std::string CallName(const std::string& logged) {
  return logged.substr(0, logged.find('('));
}

std::string Described(const Fault& fault) {
  std::ostringstream text;
  text << fault.call << " " << fault.nth << " " << fault.way;
  return text.str();
}

LongTranslations::LongTranslations()
    : text_("key=" + std::string(3000, 'x') + "%d"),
      buffer_(CatalogueEntry(kChangingPixelBuffer)),
      row_(CatalogueEntry(kRowTooLarge)) {
  CatalogueEntry(kChangingPixelBuffer) = text_.c_str();
  CatalogueEntry(kRowTooLarge) = text_.c_str();
}

LongTranslations::~LongTranslations() {
  CatalogueEntry(kChangingPixelBuffer) = buffer_;
  CatalogueEntry(kRowTooLarge) = row_;
}

void FaultRunner::Prepare() {
  Unload();
  worldH = nullptr;
  otherH = nullptr;
  outH = Untouched();
  provider = nullptr;
  frame = nullptr;
  flag = 9;
  circumstances.clear();
  calls_.clear();
  operation_.prepare(*this);
  ForgetLog();
  countBefore_ = PXLp_G.worldCount;
  owned_ = operation_.effect == Effect::Creates && worldH == nullptr;
  disposesInPlace_ = operation_.effect == Effect::Disposes && Record(worldH).ownsHandle == 0;
  before_ = worldH != nullptr ? Record(worldH) : PXL_World{};
  std::memset(Kp_G_buffer, 'b', sizeof Kp_G_buffer - 1);
}

void FaultRunner::Strike(const std::string& name, const std::vector<Fault>& faults,
                         Outcome& outcome) {
  if (operation_.moves) recorder_.MoveBlocks();
  const int nth = ++calls_[name];
  outcome.points.push_back({name, nth});
  for (const Fault& circumstance : circumstances) {
    if (Hits(circumstance, name, nth)) FailCurrentCall(name, circumstance.way);
  }
  for (const Fault& fault : faults) {
    if (!Hits(fault, name, nth)) continue;
    FailCurrentCall(name, fault.way);
    NoteFailure(fault, nth, outcome);
    outcome.lostReports += IsThrow(fault.way) && IsReport(name) ? 1 : 0;
  }
}

bool FaultRunner::StrikeNew(const std::vector<Fault>& faults, Outcome& outcome) {
  const int nth = ++calls_[kNew];
  outcome.points.push_back({kNew, nth});
  bool fails = false;
  for (const Fault& fault : faults) {
    if (!Hits(fault, kNew, nth)) continue;
    fails = true;
    NoteFailure(fault, nth, outcome);
  }
  return fails;
}

Outcome FaultRunner::Run(const std::vector<Fault>& faults) {
  Outcome outcome;
  const std::function<bool()> observer = [&] { return StrikeNew(faults, outcome); };
  recorder_.OnCall([&](const std::string& name) { Strike(name, faults, outcome); });
  recorder::OnNew(&observer);
  try {
    outcome.status = operation_.run(*this);
  } catch (...) {
    outcome.status.reset();
  }
  recorder::OnNew(nullptr);
  recorder_.OnCall(nullptr);
  recorder::FailNewOf(0);
  recorder_.script.purgeLoop = nullptr;
  outcome.log = Log();
  return outcome;
}

int FaultRunner::ExpectedCount(const Outcome& outcome) const {
  if (outcome.status != PXL_Err_NONE) return countBefore_;
  if (operation_.effect == Effect::Creates) return countBefore_ + 1;
  return operation_.effect == Effect::Disposes ? countBefore_ - 1 : countBefore_;
}

// Only a live World has marks, in either owner's handle.
void FaultRunner::CheckMarks(bool made) {
  const bool creates = operation_.effect == Effect::Creates && worldH != nullptr;
  if (!creates && !disposesInPlace_) return;
  EXPECT_EQ(Record(worldH).headMark, made ? 0xBECCAU : 0U);
  EXPECT_EQ(Record(worldH).tailMark, made ? 0xBECCAU : 0U);
}

// No World is left after a failed creation, no handle is locked, and the other
// Worlds are as the call promises.
void FaultRunner::CheckWorlds(const Outcome& outcome) {
  const bool made = operation_.effect == Effect::Creates && outcome.status == PXL_Err_NONE;
  if (operation_.effect == Effect::Refuses) {
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
  if (operation_.effect == Effect::Disposes || !IsLive(worldH)) return;
  CheckRecord({operation_.effect, before_, Record(worldH), outcome.status, wanted});
}

// A World can be locked and unlocked after any failure.
void FaultRunner::CheckUse(PXL_WorldHandle handle) {
  if (Script().surfaceWithoutMap) return;
  const std::int32_t locks = Record(handle).pixels.lockCount;
  std::uint8_t purged = 0;
  const std::int32_t status = PXL_LockPixels(0, handle, &purged);
  const PXL_PixelBuffer& pixels = Record(handle).pixels;
  // A provider without a view has nothing to unlock.
  const bool hasView = pixels.provider == nullptr || pixels.frame != nullptr;
  if (status != PXL_Err_NONE || purged != 0 || pixels.lockCount == locks || !hasView) return;
  PXL_UnlockPixels(handle);
  EXPECT_EQ(Record(handle).pixels.lockCount, locks);
}

Result FaultRunner::Conclude(const Outcome& outcome) {
  EXPECT_NE(std::memchr(Kp_G_buffer, 0, sizeof Kp_G_buffer), nullptr);
  CheckWorlds(outcome);
  Settle(outcome);
  return {outcome.status.value_or(0), CountReports(outcome.log) - outcome.lostReports,
          outcome.status.has_value() ? Exit::Returns : Exit::Throws,
          static_cast<int>(recorder_.Outstanding().size())};
}

void FaultRunner::DisposeOf(PXL_WorldHandle handle) {
  if (!IsLive(handle)) return;
  CheckUse(handle);
  EXPECT_EQ(PXL_DisposeWorld(handle), PXL_Err_NONE);
}

// Disposes of the remaining Worlds without further failures. A provider that could
// not be freed stays with its World, so it is released by hand.
void FaultRunner::Settle(const Outcome& outcome) {
  const bool disposed = operation_.effect == Effect::Disposes;
  if (disposed && outcome.status != PXL_Err_NONE && provider != nullptr)
    provider->release(&provider);
  if (!disposed) {
    DisposeOf(worldH);
    CheckTheSameWorksNow();
    DisposeOf(otherH);
    EXPECT_EQ(PXLp_G.worldCount, 0);
  }
  if (frame != nullptr) PXL_FreeFrame(frame, frameSize);
}

// A failure leaves no trace in the module.
void FaultRunner::CheckTheSameWorksNow() {
  if (operation_.effect != Effect::Creates || !circumstances.empty()) return;
  const std::int32_t status = operation_.run(*this);
  EXPECT_EQ(status, operation_.result.status);
  if (status != PXL_Err_NONE) return;
  EXPECT_EQ(PXL_DisposeWorld(owned_ ? outH : worldH), PXL_Err_NONE);
}
