// Any number of samples in a fixed space.
#ifndef K_DECIMATED_SAMPLES_H
#define K_DECIMATED_SAMPLES_H

#include <array>
#include <cstdint>

#include "K_host.h"

namespace k {

// Each slot represents the same number of samples, the last one up to as many, and
// holds the highest of them, so that no peak is lost. When all slots are full,
// neighbours are merged and each represents twice as many. Clear must come before
// any other use: an object of zeros takes no space in the library's file, and no
// memory before it is used.
class DecimatedSamples {
 public:
  void Clear();
  // Ignores `sample.changes` and counts the sample as one change.
  void Add(const K_TimeLineSample& sample);

  // The samples of the slots, then the sample added last unless it is that of its
  // slot; `changes` of that extra one is 0.
  std::uint64_t Count() const;
  const K_TimeLineSample& At(std::uint64_t index) const;

 private:
  void Halve();

  // One place is for the last sample, and merging needs an even number.
  std::array<K_TimeLineSample, K_MostTimeLineSamples - 2> slots_;
  K_TimeLineSample last_;
  std::uint64_t count_;
  std::uint64_t changesPerSlot_;
  bool lastIsShown_;  // the last slot holds last_
};

}  // namespace k

#endif
