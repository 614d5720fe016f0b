// The loops over a row for vectors of any width. Only for the files of one level:
// see the headers of the vectors in simd/. A row is converted by a step of
// vector_steps.h.
#ifndef TRANSFER_KERNELS_VECTOR_ROWS_H
#define TRANSFER_KERNELS_VECTOR_ROWS_H

#include <xmmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "transfer/kernels/kernel_set.h"

template <typename Step>
inline constexpr std::size_t PXLp_kStepChannels = Step::Vector::kBytes /
                                                  sizeof(typename Step::Destination);

// Prefetch distances in bytes: for a source in a core's own cache, and for one in
// the shared cache or in memory.
inline constexpr std::size_t PXLp_kDistanceInCache = 1024;
inline constexpr std::size_t PXLp_kDistanceInMemory = 4096;

// Prefetches the source of later vectors. Narrowing reads so much more than it
// writes that the processor's own prefetching falls behind.
template <typename Step>
void PXLp_FetchAhead(const typename Step::Source* from, std::size_t distance) {
  constexpr std::size_t kLine = 64;
  constexpr std::size_t kBytesRead = PXLp_kStepChannels<Step> * sizeof(typename Step::Source);
  if constexpr (kBytesRead > 2 * Step::Vector::kBytes) {
    for (std::size_t i = 0; i < kBytesRead; i += kLine) {
      _mm_prefetch(reinterpret_cast<const char*>(from) + distance + i, _MM_HINT_T0);
    }
  }
}

// The last vector overlaps the one before: converting a channel again yields the
// same.
template <typename Step>
void PXLp_ConvertCaching(const void* source, void* destination, std::size_t channels) {
  constexpr std::size_t kStep = PXLp_kStepChannels<Step>;
  if (channels < kStep) {
    Step::kPlain(source, destination, channels);
    return;
  }
  const auto* from = static_cast<const typename Step::Source*>(source);
  auto* to = static_cast<typename Step::Destination*>(destination);
  const std::size_t last = channels - kStep;
  for (std::size_t i = 0; i < last; i += kStep) {
    PXLp_FetchAhead<Step>(from + i, PXLp_kDistanceInCache);
    Step::Vector::Store(to + i, Step::Convert(from + i));
  }
  Step::Vector::Store(to + last, Step::Convert(from + last));
}

// Stores `count` of a vector's channels, from the one at `first` on.
template <typename Step>
void PXLp_StorePart(typename Step::Destination* to, typename Step::Vector::Type vector,
                    std::size_t first, std::size_t count) {
  typename Step::Destination channels[PXLp_kStepChannels<Step>];
  Step::Vector::Store(channels, vector);
  std::memcpy(to, channels + first, count * sizeof(typename Step::Destination));
}

// Streaming stores need addresses at multiples of the vector's size. The unaligned
// head and tail use ordinary stores, which do not overlap the streaming ones: a
// cache line that is written in both ways costs more than all of a row.
template <typename Step>
void PXLp_ConvertStreaming(const void* source, void* destination, std::size_t channels) {
  constexpr std::size_t kStep = PXLp_kStepChannels<Step>;
  constexpr std::size_t kChannelBytes = sizeof(typename Step::Destination);
  const std::size_t head =
      (0 - reinterpret_cast<std::uintptr_t>(destination)) % Step::Vector::kBytes;
  if (channels < kStep || head % kChannelBytes != 0) {
    PXLp_ConvertCaching<Step>(source, destination, channels);
    return;
  }
  const auto* from = static_cast<const typename Step::Source*>(source);
  auto* to = static_cast<typename Step::Destination*>(destination);
  std::size_t i = head / kChannelBytes;
  if (i != 0) PXLp_StorePart<Step>(to, Step::Convert(from), 0, i);
  for (; i + kStep <= channels; i += kStep) {
    PXLp_FetchAhead<Step>(from + i, PXLp_kDistanceInMemory);
    Step::Vector::Stream(to + i, Step::Convert(from + i));
  }
  const std::size_t rest = channels - i;
  if (rest != 0) {
    PXLp_StorePart<Step>(to + i, Step::Convert(from + channels - kStep), kStep - rest, rest);
  }
}

template <typename Step>
inline constexpr PXLp_KernelPair PXLp_kVectorKernels = {PXLp_ConvertCaching<Step>,
                                                        PXLp_ConvertStreaming<Step>};

#endif
