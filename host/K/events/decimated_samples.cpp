// Any number of samples in a fixed space.
#include "host/K/events/decimated_samples.h"

#include <algorithm>

namespace k {
namespace {

std::uint64_t Height(const K_TimeLineSample& sample) {
  const auto booked = static_cast<std::uint64_t>(std::max<std::int64_t>(sample.application, 0));
  return sample.liveBytes + sample.keptBytes + sample.handleBytes + booked;
}

// Of equal samples the later one counts as higher.
bool IsHigher(const K_TimeLineSample& later, const K_TimeLineSample& earlier) {
  return Height(later) >= Height(earlier);
}

K_TimeLineSample Merged(const K_TimeLineSample& earlier, const K_TimeLineSample& later) {
  K_TimeLineSample result = IsHigher(later, earlier) ? later : earlier;
  result.changes = earlier.changes + later.changes;
  return result;
}

}  // namespace

void DecimatedSamples::Clear() {
  count_ = 0;
  changesPerSlot_ = 1;
  lastIsShown_ = true;
}

void DecimatedSamples::Add(const K_TimeLineSample& sample) {
  last_ = sample;
  last_.changes = 1;
  if (count_ > 0 && slots_[count_ - 1].changes < changesPerSlot_) {
    K_TimeLineSample& slot = slots_[count_ - 1];
    lastIsShown_ = IsHigher(last_, slot);
    slot = Merged(slot, last_);
    last_.changes = 0;
    return;
  }
  if (count_ == slots_.size()) Halve();
  slots_[count_++] = last_;
  lastIsShown_ = true;
}

void DecimatedSamples::Halve() {
  count_ /= 2;
  for (std::uint64_t i = 0; i < count_; ++i) slots_[i] = Merged(slots_[2 * i], slots_[2 * i + 1]);
  changesPerSlot_ *= 2;
}

std::uint64_t DecimatedSamples::Count() const {
  return count_ + (lastIsShown_ ? 0 : 1);
}

const K_TimeLineSample& DecimatedSamples::At(std::uint64_t index) const {
  return index < count_ ? slots_[index] : last_;
}

}  // namespace k
