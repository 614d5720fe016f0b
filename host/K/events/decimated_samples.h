// Samples in a bounded space, however many there are.
#ifndef K_DECIMATED_SAMPLES_H
#define K_DECIMATED_SAMPLES_H

#include <array>
#include <cstdint>

#include "K_host.h"

namespace k {

// Each slot stands for the same number of samples, the last for up to as many,
// and holds the highest of them, so that no peak is lost. When all slots are
// full, neighbours are merged and each stands for twice as many. Zero-filled
// at first, and to be cleared before use: so it takes no room in the program's
// file and no memory until then.
class DecimatedSamples {
 public:
  void Clear();
  // `sample.changes` is set here.
  void Add(const K_TimeLineSample& sample);

  // Those of the slots, then the one that was added last when its slot holds
  // another; that one counts no changes.
  std::uint64_t Count() const;
  const K_TimeLineSample& At(std::uint64_t index) const;

 private:
  void Halve();

  // One place is the last sample's, and pairs need an even number.
  std::array<K_TimeLineSample, K_MostTimeLineSamples - 2> slots_;
  K_TimeLineSample last_;
  std::uint64_t count_;
  std::uint64_t changesPerSlot_;
  bool lastIsShown_;  // by the last slot
};

}  // namespace k

#endif
