// The loops over a row in vectors of any width. For the files that are compiled
// for one level: each passes steps of its own unnamed namespace, so that nothing
// made here is shared with code for other processors.
//
// A step makes one vector of the destination: it is one of the vector types of
// simd/, with the channels' types Source and Destination, a function Convert
// from the address of the source channels to the vector, and PLAIN, the loop
// that it equals.
#ifndef TRANSFER_KERNELS_VECTOR_ROWS_H
#define TRANSFER_KERNELS_VECTOR_ROWS_H

#include <xmmintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "transfer/kernels/Kernels.h"

template <class Step>
inline constexpr std::size_t PXLp_STEP_CHANNELS = Step::BYTES / sizeof(typename Step::Destination);

// How far ahead, in bytes, when the source comes from a core's own cache, and
// when it comes from farther away.
inline constexpr std::size_t PXLp_DISTANCE_IN_CACHE = 1024;
inline constexpr std::size_t PXLp_DISTANCE_IN_MEMORY = 4096;

// Asks for the source of later vectors. Narrowing reads so much more than it
// writes that the processor's own foresight falls behind.
template <class Step>
void PXLp_FetchAhead(const typename Step::Source* from, std::size_t distance) {
  constexpr std::size_t line = 64;
  constexpr std::size_t bytesRead = PXLp_STEP_CHANNELS<Step> * sizeof(typename Step::Source);
  if constexpr (bytesRead > 2 * Step::BYTES) {
    for (std::size_t i = 0; i < bytesRead; i += line) {
      _mm_prefetch(reinterpret_cast<const char*>(from) + distance + i, _MM_HINT_T0);
    }
  }
}

// The last vector reaches into the one before, since what is converted twice
// is the same twice.
template <class Step>
void PXLp_CachingRow(const void* source, void* destination, std::size_t channels) {
  constexpr std::size_t step = PXLp_STEP_CHANNELS<Step>;
  if (channels < step) {
    Step::PLAIN(source, destination, channels);
    return;
  }
  const auto* from = static_cast<const typename Step::Source*>(source);
  auto* to = static_cast<typename Step::Destination*>(destination);
  const std::size_t last = channels - step;
  for (std::size_t i = 0; i < last; i += step) {
    PXLp_FetchAhead<Step>(from + i, PXLp_DISTANCE_IN_CACHE);
    Step::Store(to + i, Step::Convert(from + i));
  }
  Step::Store(to + last, Step::Convert(from + last));
}

// Stores `count` of a vector's channels, from the one at `first` on.
template <class Step>
void PXLp_StorePart(typename Step::Destination* to, typename Step::Type vector, std::size_t first,
                    std::size_t count) {
  typename Step::Destination channels[PXLp_STEP_CHANNELS<Step>];
  Step::Store(channels, vector);
  std::memcpy(to, channels + first, count * sizeof(typename Step::Destination));
}

// Streaming stores have to be at multiples of the vector's size. What is before
// the first and behind the last such is stored plainly, and to the channel: a
// line that is written in both ways costs more than all of a row.
template <class Step>
void PXLp_StreamingRow(const void* source, void* destination, std::size_t channels) {
  constexpr std::size_t step = PXLp_STEP_CHANNELS<Step>;
  constexpr std::size_t channelBytes = sizeof(typename Step::Destination);
  const std::size_t head = (0 - reinterpret_cast<std::uintptr_t>(destination)) % Step::BYTES;
  if (channels < step || head % channelBytes != 0) {
    PXLp_CachingRow<Step>(source, destination, channels);
    return;
  }
  const auto* from = static_cast<const typename Step::Source*>(source);
  auto* to = static_cast<typename Step::Destination*>(destination);
  std::size_t i = head / channelBytes;
  if (i != 0) PXLp_StorePart<Step>(to, Step::Convert(from), 0, i);
  for (; i + step <= channels; i += step) {
    PXLp_FetchAhead<Step>(from + i, PXLp_DISTANCE_IN_MEMORY);
    Step::Stream(to + i, Step::Convert(from + i));
  }
  const std::size_t rest = channels - i;
  if (rest != 0) {
    PXLp_StorePart<Step>(to + i, Step::Convert(from + channels - step), step - rest, rest);
  }
}

template <class Step>
inline constexpr PXLp_KernelPair PXLp_VECTOR_ROWS = {PXLp_CachingRow<Step>,
                                                     PXLp_StreamingRow<Step>};

#endif
